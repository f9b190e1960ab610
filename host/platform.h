#pragma once

#include <string>

namespace host {

// Puts the calling thread on an audio platform for the object's life. Endpoints are enumerated and the module is called
// on that thread. Each system has a source file of its own; CMake picks it.
class Platform {
 public:
  // `description` as --platform takes it. Throws Failure.
  explicit Platform(const std::string& description);
  Platform(const Platform&) = delete;
  Platform& operator=(const Platform&) = delete;
  ~Platform();
};

}  // namespace host
