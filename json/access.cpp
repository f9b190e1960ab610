#include "json/access.h"

#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "json/types.h"

namespace json {
namespace {

constexpr std::int32_t kNoRootKey = 999;  // the framework's, above RapidJSON's own codes

bool IsDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

// The value of the four hexadecimal digits at `at`, or -1 if there aren't four.
std::int32_t HexUnit(std::u16string_view text, std::size_t at) {
  std::int32_t unit = 0;
  for (std::size_t i = at; i < at + 4; ++i) {
    if (i >= text.size()) return -1;
    const char16_t lower = text[i] | 0x20;
    if (!IsDigit(text[i]) && (lower < u'a' || lower > u'f')) return -1;
    unit = unit * 16 + (IsDigit(text[i]) ? text[i] - u'0' : lower - u'a' + 10);
  }
  return unit;
}

// Whether `first` stands before `second` anywhere. Without a way out of the loop the compiler compares many units at once.
bool HasPair(std::u16string_view text, char16_t first, char16_t second) {
  const char16_t* const units = text.data();
  std::uint16_t found = 0;
  for (std::size_t at = 1; at < text.size(); ++at) {
    const std::uint16_t isPair = (units[at - 1] == first) & (units[at] == second);
    found |= isPair;
  }
  return found != 0;
}

// Whether an escape stands for the second half of a surrogate pair without the first. RapidJSON refuses a first half
// without the second, but asserts that the other case doesn't happen; without assertions it stores half a character.
bool HasLoneSecondHalf(std::u16string_view text) {
  if (!HasPair(text, u'\\', u'u')) return false;
  for (std::size_t at = text.find(u'\\'); at != text.npos; at = text.find(u'\\', at)) {
    if (at + 1 >= text.size() || text[at + 1] != u'u') {
      at += 2;
      continue;
    }
    const std::int32_t unit = HexUnit(text, at + 2);
    if (unit >= 0xDC00 && unit <= 0xDFFF) return true;
    // The parser checks the escape that follows a first half.
    at += unit >= 0xD800 && unit <= 0xDBFF ? 12 : 6;
  }
  return false;
}

// Whether a negative exponent begins with the minus sign at `at`.
bool IsExponentSign(std::u16string_view text, std::size_t at) {
  return at > 0 && text[at] == u'-' && (text[at - 1] | 0x20) == u'e';
}

// RapidJSON 1.1.0 has a defect: GenericReader::ParseNumber adds the exponent, of which it takes up to -2147483639, and
// the negative number of fraction digits in an int. The sum can overflow to a positive number, and Pow10 then reads
// outside its table. Both kParseFullPrecisionFlag and the normal way begin with that sum, so no flag avoids it.
//
// An exponent of this many digits is safe as long as there are fewer than two thousand million fraction digits.
constexpr std::size_t kSafeExponentDigits = 8;

// The text with each deeper exponent outside of strings replaced by one of so many digits. The number is 0 with either.
std::u16string WithoutDeepExponents(std::u16string text) {
  bool inString = false;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] == u'"') inString = !inString;
    if (inString && text[at] == u'\\') ++at;
    if (inString || !IsExponentSign(text, at)) continue;
    const std::size_t end = std::min(text.find_first_not_of(u"0123456789", at + 1), text.size());
    const std::size_t begin = std::min(text.find_first_not_of(u'0', at + 1), end);
    if (end - begin <= kSafeExponentDigits) continue;
    // Leading zeros keep the text's length, so that no digit has to be moved.
    std::fill_n(&text[begin], end - begin - kSafeExponentDigits, u'0');
    text[end - kSafeExponentDigits] = u'9';
  }
  return text;
}

// Whether the text has such an exponent, in a string or not: nearly no text has, and the others need no copy.
bool MayHaveDeepExponent(std::u16string_view text) {
  if (!HasPair(text, u'e', u'-') && !HasPair(text, u'E', u'-')) return false;
  for (std::size_t at = text.find(u'-'); at != text.npos; at = text.find(u'-', at + 1)) {
    if (!IsExponentSign(text, at)) continue;
    if (text.find_first_not_of(u"0123456789", at + 1) - at > kSafeExponentDigits) return true;
  }
  return false;
}

// Passes the parser's events on to the document, but ends the parsing at a number that has become infinite: RapidJSON
// checks the exponent of a number and not its value.
class FiniteNumbers {
 public:
  explicit FiniteNumbers(Document& document) : document_(document) {}

  bool Null() { return document_.Null(); }
  bool Bool(bool flag) { return document_.Bool(flag); }
  bool Int(int number) { return document_.Int(number); }
  bool Uint(unsigned number) { return document_.Uint(number); }
  bool Int64(std::int64_t number) { return document_.Int64(number); }
  bool Uint64(std::uint64_t number) { return document_.Uint64(number); }
  bool Double(double number) { return std::isfinite(number) && document_.Double(number); }
  bool RawNumber(const char16_t* text, rapidjson::SizeType length, bool copy) {
    return document_.RawNumber(text, length, copy);
  }
  bool String(const char16_t* text, rapidjson::SizeType length, bool copy) {
    return document_.String(text, length, copy);
  }
  bool StartObject() { return document_.StartObject(); }
  bool Key(const char16_t* text, rapidjson::SizeType length, bool copy) { return document_.Key(text, length, copy); }
  bool EndObject(rapidjson::SizeType members) { return document_.EndObject(members); }
  bool StartArray() { return document_.StartArray(); }
  bool EndArray(rapidjson::SizeType elements) { return document_.EndArray(elements); }

 private:
  Document& document_;
};

}  // namespace

bool ParseText(const std::u16string& text, Document& document) {
  if (HasLoneSecondHalf(text)) return false;
  const std::u16string safe = MayHaveDeepExponent(text) ? WithoutDeepExponents(text) : std::u16string();
  const char16_t* const source = safe.empty() ? text.c_str() : safe.c_str();
  bool parsed = false;
  auto parse = [&](Document& target) {
    rapidjson::GenericStringStream<Encoding> stream(source);
    rapidjson::GenericReader<Encoding, Encoding, HeapAllocator> reader;
    FiniteNumbers handler(target);
    parsed = !reader.Parse<rapidjson::kParseIterativeFlag>(stream, handler).IsError();
    return parsed;
  };
  document.Populate(parse);
  return parsed;
}

std::u16string ValueToText(const Value& value) {
  using Buffer = rapidjson::GenericStringBuffer<Encoding, HeapAllocator>;
  Buffer buffer;
  rapidjson::Writer<Buffer, Encoding, Encoding, HeapAllocator> writer(buffer);
  value.Accept(writer);
  return std::u16string(buffer.GetString(), buffer.GetSize() / sizeof(char16_t));
}

const Value* FindMember(const Value& object, std::u16string_view key) {
  if (!object.IsObject()) return nullptr;
  for (const auto& member : object.GetObject()) {
    if (key == std::u16string_view(member.name.GetString(), member.name.GetStringLength())) return &member.value;
  }
  return nullptr;
}

std::int32_t GetObjectMember(const Value* parent, std::u16string_view key, ObjectMember* out) {
  if (parent->IsArray()) {
    out->error = MakeErrorObject(kNoRootKey);
    out->value = out->error.get();
    return 0;
  }
  const Value* member = FindMember(*parent, key);
  if (member == nullptr || member->IsNull()) return 0;
  out->value = member;
  return 1;
}

std::unique_ptr<Document> MakeErrorObject(std::int32_t code) {
  auto document = std::make_unique<Document>();
  document->SetObject();
  const std::u16string text = ParseErrorText(code);
  Document::AllocatorType& allocator = document->GetAllocator();
  document->AddMember(Value(u"PARSE_ERROR", allocator), Value(text.c_str(), allocator), allocator);
  return document;
}

std::u16string ParseErrorText(std::int32_t code) {
  static constexpr std::array<const char16_t*, 18> kTexts = {
      u"No error",
      u"The document is empty.",
      u"The document root must not follow by other values.",
      u"Invalid value.",
      u"Missing a name for object member.",
      u"Missing a colon after a name of object member.",
      u"Missing a comma or '}' after an object member.",
      u"Missing a comma or ']' after an array element.",
      u"Incorrect hex digit after \\u escape in string.",
      u"The surrogate pair in string is invalid.",
      u"Invalid escape character in string.",
      u"Missing a closing quotation mark in string.",
      u"Invalid encoding in string.",
      u"Number too big to be stored in double.",
      u"Miss fraction part in number.",
      u"Miss exponent in number.",
      u"Parsing was terminated.",
      u"Unspecific syntax error.",
  };
  if (code == kNoRootKey) return u"No Root key name. Iterate through array by index.";
  if (code < 0 || static_cast<std::size_t>(code) >= kTexts.size()) return u"UNKNOWN";
  return kTexts[static_cast<std::size_t>(code)];
}

}  // namespace json
