#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "host/base/json.h"

namespace host {

// Where and why a text stops being JSON with values that the module can take. Lines and columns count from 1, columns
// in characters.
struct JsonFault {
  std::size_t line, column;
  std::string reason;
};

// The first member called `key`, which is the one that the module reads too. Null when there is none, or when `object`
// is null or no object.
const Json* FindMember(const Json* object, std::string_view key);
Json* FindMember(Json* object, std::string_view key);

// Nothing when `value` is null, or no integer of 32 bits.
std::optional<int> IntIn(const Json* value);

// The text of a contract, or of a reply, together with its tree. Doubled members are all in the tree, in their order.
// Numbers without fraction and exponent are integers as far as 64 bits hold them; zero and above are always unsigned.
class ParsedContract {
 public:
  // `text` must be valid UTF-8 without a NUL. Its nesting may be of any depth.
  explicit ParsedContract(std::string text);

  // Nothing when the text is JSON; otherwise the root is null.
  const std::optional<JsonFault>& Fault() const { return fault_; }
  const std::string& Text() const { return text_; }
  Json& Root() { return root_; }
  const Json& Root() const { return root_; }
  // Null when the root holds no object of that name.
  const Json* CoreData() const;

  // The text with `member`, key and value, in front of the members of CoreData, or of DeviceInfo in it: of doubled keys
  // the module takes the first. That record must be there, and not empty.
  std::string WithInCoreData(std::string_view member) const { return With(member, coreDataMembers_); }
  std::string WithInDeviceInfo(std::string_view member) const { return With(member, deviceInfoMembers_); }

 private:
  std::string With(std::string_view member, std::size_t place) const;

  std::string text_;
  Json root_;
  std::optional<JsonFault> fault_;
  std::size_t coreDataMembers_ = 0, deviceInfoMembers_ = 0;  // where they begin in the text, in bytes
};

}  // namespace host
