#pragma once

#include <optional>
#include <string>
#include <tuple>

#include "host/base/member.h"

namespace host {

// The system's own sound, as --platform names it.
extern const char* const kSystemPlatform;

// What --platform takes on this system, for the help and for errors.
extern const char* const kPlatformHelp;

// Puts the calling thread on an audio platform for the object's life. Endpoints are enumerated and the module is called
// on that thread. Each system has a source file of its own; CMake picks it.
class Platform {
 public:
  // `description` as --platform takes it, but for "auto". Throws Failure.
  explicit Platform(const std::string& description);
  Platform(const Platform&) = delete;
  Platform& operator=(const Platform&) = delete;
  ~Platform();
};

// Whether the endpoints of the platform live in the process that is on it, and end with it.
bool EndsWithProcess(const std::string& description);

// The platform that a command uses.
struct PlatformChoice {
  std::string asked;                // as --platform was given
  std::string used;                 // the same, but never "auto"
  std::optional<std::string> note;  // for a person: why it isn't the system's sound, when that was looked for

  static constexpr auto Members() {
    return std::tuple(Member("platform", &PlatformChoice::used), Member("platformAsked", &PlatformChoice::asked),
                      Member("platformNote", &PlatformChoice::note));
  }
};

// For "auto" the system's sound, if that answers, else the virtual machine; any other as it is, tried or not.
PlatformChoice ChoosePlatform(const std::string& asked);

}  // namespace host
