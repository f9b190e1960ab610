// The file of the module under test: another build of it, and another place of its log, on each operating system.
#pragma once

#include <filesystem>
#include <string>

// One at a time.
class ModuleFile {
 public:
  // Where the log of the module will be, a directory that isn't there yet: in `parent` where that can be chosen.
  static std::filesystem::path LogDirectory(const std::filesystem::path& parent);

  // Loads the module, which logs into `log`, a path that LogDirectory gave. Throws std::runtime_error.
  explicit ModuleFile(const std::filesystem::path& log);
  ModuleFile(const ModuleFile&) = delete;
  ModuleFile& operator=(const ModuleFile&) = delete;
  ~ModuleFile();

  // The export with this name; null when there is none.
  void* Export(const char* name) const;

  // A line of the log as it is where the C locale has no characters but ASCII.
  static std::string AsciiLine(const std::string& line);

 private:
  void* handle_;
};
