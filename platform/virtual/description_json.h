#pragma once

#include <deque>
#include <functional>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace virtual_audio {

// A value of a JSON text. The library's own objects and lists end by way of a heap-allocated stack, and so end the process
// where there is no memory. These need neither memory for that nor recursion, because a tree owns all its values.
struct JsonValue {
  enum class Kind { kScalar, kObject, kList };

  Kind kind = Kind::kScalar;
  nlohmann::json scalar = {};                                         // null, a flag, a number or a text
  std::map<std::string, const JsonValue*, std::less<>> members = {};  // of an object
  std::vector<const JsonValue*> elements = {};                        // of a list
};

// The root comes first.
using JsonTree = std::deque<JsonValue>;

// Reads a JSON text in UTF-8. Throws platform::PlatformError with a sentence that begins with line and column for a text
// that isn't JSON or has a number beyond a double's range, and with its path for a key that an object has twice.
JsonTree ReadJson(std::string_view text);

// Throws a platform::PlatformError for something in a description. `place` is where it stands.
[[noreturn]] void RefuseAt(const std::string& place, std::string_view reason);

// The path of an object's member. The path of the whole description is empty.
std::string PathOfMember(const std::string& path, std::string_view key);
std::string PathOfElement(const std::string& path, std::size_t index);

}  // namespace virtual_audio
