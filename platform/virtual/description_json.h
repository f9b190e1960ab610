#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>

namespace virtual_audio {

// Reads a JSON text in UTF-8. Throws platform::PlatformError with a sentence that begins with line and column for a text
// that isn't JSON or has a number beyond a double's range, and with its path for a key that an object has twice.
nlohmann::json ReadJson(std::string_view text);

// Throws a platform::PlatformError for something in a description. `place` is where it stands.
[[noreturn]] void RefuseAt(const std::string& place, std::string_view reason);

// The path of an object's member. The path of the whole description is empty.
std::string PathOfMember(const std::string& path, std::string_view key);
std::string PathOfElement(const std::string& path, std::size_t index);

}  // namespace virtual_audio
