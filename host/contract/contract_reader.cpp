#include "host/contract/contract_reader.h"

#include <algorithm>
#include <sstream>
#include <string_view>

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
    {"expected '}'", "Missing a comma or } after an object member."},
    {"expected ']'", "Missing a comma or ] after an array element."},
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

}  // namespace

bool ContractReader::Read(const std::string& text) {
  // The parser passes over a byte order mark, and the module doesn't.
  if (text.starts_with("\xEF\xBB\xBF")) {
    fault = FaultAt(text, 0, "Invalid value.");
    return false;
  }
  // A stream tells how far it was read.
  std::istringstream stream(text);
  text_ = &text;
  stream_ = &stream;
  return Json::sax_parse(stream, this);
}

bool ContractReader::number_integer(std::int64_t value) {
  return value < 0 ? Add(value) : Add(static_cast<std::uint64_t>(value));
}

bool ContractReader::key(std::string& name) {
  open_.back().key = std::move(name);
  return true;
}

bool ContractReader::start_object(std::size_t) {
  // Only the first record of each name counts, so only its place is kept. No place is 0.
  const bool isCoreData = open_.size() == 1 && open_[0].key == "CoreData";
  const bool isDeviceInfo = open_.size() == 2 && open_[0].key == "CoreData" && open_[1].key == "DeviceInfo";
  const auto note = [&](std::size_t& place) {
    if (place == 0) place = static_cast<std::size_t>(stream_->tellg());
  };
  if (isCoreData) note(coreDataMembers);
  if (isDeviceInfo) note(deviceInfoMembers);
  open_.emplace_back();
  return true;
}

bool ContractReader::end_object() {
  // The members are moved into their place at once: growing by one, the map would copy them.
  Json::object_t object;
  object.reserve(open_.back().values.size());
  // The map is a vector of members, and this puts one at its end without looking for the key.
  for (auto& [key, value] : open_.back().values) object.emplace_back(std::move(key), std::move(value));
  open_.pop_back();
  return Add(std::move(object));
}

bool ContractReader::start_array(std::size_t) {
  open_.emplace_back();
  return true;
}

bool ContractReader::end_array() {
  Json::array_t array;
  array.reserve(open_.back().values.size());
  for (auto& [key, value] : open_.back().values) array.push_back(std::move(value));
  open_.pop_back();
  return Add(std::move(array));
}

bool ContractReader::Add(Json value) {
  if (open_.empty()) {
    root = std::move(value);
  } else {
    open_.back().values.emplace_back(std::move(open_.back().key), std::move(value));
    open_.back().key.clear();
  }
  return true;
}

bool ContractReader::parse_error(std::size_t position, const std::string& token,
                                 const nlohmann::detail::exception& error) {
  const std::string_view message = error.what();
  const auto isSaid = [&](std::string_view piece) { return message.find(piece) != message.npos; };
  // The parser has read what is at fault: one character, unless it is the value of a string or a number as a whole.
  const bool isWholeValue =
      isSaid("unexpected string literal") || isSaid("unexpected number literal") || isSaid("number overflow");
  const std::size_t behind = std::min(isWholeValue ? token.size() : 1, position);
  const auto reason = std::ranges::find_if(kReasons, isSaid, [](const auto& row) { return row.first; });
  fault = FaultAt(*text_, std::min(position - behind, text_->size()),
                  open_.empty() && isSaid("unexpected end of input") ? "The document is empty." : reason->second);
  return false;
}

}  // namespace host
