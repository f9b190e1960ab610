#pragma once

#include <optional>
#include <string>

#include "host/endpoints/refused_operation.h"

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

// The operation that failed last on this thread's platform, the host's own reading apart. Nothing when none did, and where
// the platform doesn't tell, as Windows' own.
std::optional<RefusedOperation> LastRefusedOperation();

// The platform in words that mean the same in another process: with the address of the sound server where the environment
// names one.
std::string LastingPlatform(const std::string& description);

// Whether the endpoints of the platform live in the process that is on it, and end with it.
bool EndsWithProcess(const std::string& description);

// The platform that `asked` means, as --platform takes it: the system's own sound for "auto", any other as it is. Whether
// it answers isn't tried here. "auto" never means the virtual machine, so that no test passes unheard.
std::string ChoosePlatform(const std::string& asked);

}  // namespace host
