#include "host/contract/parsed_contract.h"

#include <algorithm>
#include <limits>
#include <sstream>
#include <utility>
#include <vector>

namespace host {
namespace {

// What a person is told, by a piece of what the parser says.
constexpr std::pair<std::string_view, const char*> kReasons[] = {
    {"number overflow", "Number too big to be stored in double."},
    {"surrogate", "The surrogate pair in string is invalid."},
    {"missing closing quote", "Missing a closing quotation mark in string."},
    {"4 hex digits", "Incorrect hex digit after \\u escape in string."},
    {"invalid string", "Invalid escape character in string."},
    {"digit after '.'", "Miss fraction part in number."},
    {"after exponent", "Miss exponent in number."},
    {"object separator", "Missing a colon after a name of object member."},
    {"object key", "Missing a name for object member."},
    {"; expected '}'", "Missing a comma or '}' after an object member."},
    {"; expected ']'", "Missing a comma or ']' after an array element."},
    {"; expected end of input", "The document root must not be followed by other values."},
    {"", "Invalid value."},
};

JsonFault FaultAt(std::string_view text, std::size_t offset, std::string reason) {
  const std::string_view good = text.substr(0, offset);
  const std::string_view line = good.substr(good.rfind('\n') + 1);  // npos + 1 is 0
  const auto isCharacterStart = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; };
  return {.line = 1 + static_cast<std::size_t>(std::count(good.begin(), good.end(), '\n')),
          .column = 1 + static_cast<std::size_t>(std::count_if(line.begin(), line.end(), isCharacterStart)),
          .reason = std::move(reason)};
}

// Builds the tree of a contract from the events of the JSON parser. The parser's own tree would drop doubled members,
// and look each key up among all those before it.
class ContractReader : public nlohmann::json_sax<Json> {
 public:
  // Reads all of `text`. Whether it is JSON.
  bool Read(const std::string& text) {
    text_ = text;
    // The parser passes over a byte order mark, and the module doesn't.
    if (text.starts_with("\xEF\xBB\xBF")) {
      fault = FaultAt(text, 0, "Invalid value.");
      return false;
    }
    // A stream tells how far it was read.
    stream_.str(text);
    return Json::sax_parse(stream_, this);
  }

  Json root;
  std::optional<JsonFault> fault;                          // there when the text isn't JSON
  std::size_t coreDataMembers = 0, deviceInfoMembers = 0;  // as in ParsedContract

  bool null() override { return Add(nullptr); }
  bool boolean(bool value) override { return Add(value); }
  bool number_integer(std::int64_t value) override {
    return value < 0 ? Add(value) : Add(static_cast<std::uint64_t>(value));
  }
  bool number_unsigned(std::uint64_t value) override { return Add(value); }
  bool number_float(double value, const std::string&) override { return Add(value); }
  bool string(std::string& value) override { return Add(std::move(value)); }
  bool binary(Json::binary_t&) override { return false; }

  bool start_object(std::size_t) override {
    // Only the first record of each name counts, so only its place is kept. No place is 0.
    const bool isInCoreData = !open_.empty() && open_[0].key == "CoreData";
    const auto note = [&](std::size_t& place) {
      if (place == 0) place = static_cast<std::size_t>(stream_.tellg());
    };
    if (isInCoreData && open_.size() == 1) note(coreDataMembers);
    if (isInCoreData && open_.size() == 2 && open_[1].key == "DeviceInfo") note(deviceInfoMembers);
    open_.emplace_back();
    return true;
  }

  bool key(std::string& name) override {
    open_.back().key = std::move(name);
    return true;
  }

  bool end_object() override {
    // The members are moved into their place at once: growing by one, the map would copy them. It is a vector of
    // members, and this puts one at its end without looking for the key.
    Json::object_t object;
    object.reserve(open_.back().values.size());
    for (auto& [key, value] : open_.back().values) object.emplace_back(std::move(key), std::move(value));
    open_.pop_back();
    return Add(std::move(object));
  }

  bool start_array(std::size_t) override {
    open_.emplace_back();
    return true;
  }

  bool end_array() override {
    Json::array_t array;
    array.reserve(open_.back().values.size());
    for (auto& [key, value] : open_.back().values) array.push_back(std::move(value));
    open_.pop_back();
    return Add(std::move(array));
  }

  bool parse_error(std::size_t position, const std::string& token, const nlohmann::detail::exception& error) override {
    const std::string_view message = error.what();
    const auto isSaid = [&](std::string_view piece) { return message.find(piece) != message.npos; };
    // The parser has read what is at fault: a string or number as a whole, the character that spoils an escape sequence,
    // or any other character.
    std::size_t offset = position - std::min<std::size_t>(position, 1);
    if (isSaid("unexpected string literal") || isSaid("unexpected number literal") || isSaid("number overflow")) {
      offset = position - std::min(position, token.size());
    } else if (isSaid("backslash") || isSaid("hex digits") || isSaid("surrogate")) {
      offset = text_.rfind('\\', offset);
    }
    const auto reason = std::ranges::find_if(kReasons, isSaid, [](const auto& row) { return row.first; });
    fault = FaultAt(text_, std::min(offset, text_.size()),
                    open_.empty() && isSaid("unexpected end of input") ? "The document is empty." : reason->second);
    return false;
  }

 private:
  // A container that isn't read to its end. An element of an array has an empty key.
  struct Open {
    std::string key;  // of the member that is read
    std::vector<std::pair<std::string, Json>> values;
  };

  bool Add(Json value) {
    if (open_.empty()) {
      root = std::move(value);
    } else {
      open_.back().values.emplace_back(std::move(open_.back().key), std::move(value));
      open_.back().key.clear();
    }
    return true;
  }

  std::string_view text_;
  std::istringstream stream_;
  std::vector<Open> open_;
};

}  // namespace

const Json* FindMember(const Json* object, std::string_view key) {
  if (object == nullptr || !object->is_object()) return nullptr;
  const auto& members = object->get_ref<const Json::object_t&>();
  const auto member =
      std::find_if(members.begin(), members.end(), [&](const auto& candidate) { return candidate.first == key; });
  return member == members.end() ? nullptr : &member->second;
}

Json* FindMember(Json* object, std::string_view key) {
  return const_cast<Json*>(FindMember(static_cast<const Json*>(object), key));
}

std::optional<int> IntIn(const Json* value) {
  if (value == nullptr || !value->is_number_integer()) return std::nullopt;
  // Exact for every number that can be in range.
  const auto number = value->get<double>();
  using Limits = std::numeric_limits<int>;
  if (number < Limits::min() || number > Limits::max()) return std::nullopt;
  return static_cast<int>(number);
}

ParsedContract::ParsedContract(std::string text) : text_(std::move(text)) {
  ContractReader reader;
  if (reader.Read(text_)) root_ = std::move(reader.root);
  fault_ = std::move(reader.fault);
  coreDataMembers_ = reader.coreDataMembers;
  deviceInfoMembers_ = reader.deviceInfoMembers;
}

const Json* ParsedContract::CoreData() const {
  const Json* core = FindMember(&root_, "CoreData");
  return core != nullptr && core->is_object() ? core : nullptr;
}

std::string ParsedContract::With(std::string_view member, std::size_t place) const {
  std::string text;
  text.reserve(text_.size() + member.size() + 1);
  return text.append(text_, 0, place).append(member).append(",").append(text_, place);
}

}  // namespace host
