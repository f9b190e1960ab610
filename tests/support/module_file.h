// The file of the module under test, and where it logs: how either is chosen differs between operating systems.
#pragma once

#include <filesystem>
#include <string>

// The loaded module. One object at a time.
class ModuleFile {
 public:
  // The log directory that the module will have. It isn't there yet. It lies in `parent` where the system leaves a
  // choice.
  static std::filesystem::path LogDirectory(const std::filesystem::path& parent);

  // Loads the module with the log directory `log`, which LogDirectory returned. Throws std::runtime_error.
  explicit ModuleFile(const std::filesystem::path& log);
  ModuleFile(const ModuleFile&) = delete;
  ModuleFile& operator=(const ModuleFile&) = delete;
  ~ModuleFile();

  // The function that the module exports by this name, null if there is none.
  void* Export(const char* name) const;

  // The line as it would be on a system whose C locale has only ASCII characters.
  static std::string AsciiLine(const std::string& line);

 private:
  void* handle_;
};
