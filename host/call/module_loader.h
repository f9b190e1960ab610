#pragma once

#include <filesystem>

namespace host {

// A dynamic library. It stays loaded to the end of the process, as long as the module's loggers live. Each system has a
// source file of its own; CMake picks it.
class LoadedLibrary {
 public:
  // Throws std::runtime_error with the system's reason.
  explicit LoadedLibrary(const std::filesystem::path& file);

  // The address of an exported symbol; null when the library doesn't export it.
  void* Symbol(const char* name) const;

 private:
  void* handle_;
};

}  // namespace host
