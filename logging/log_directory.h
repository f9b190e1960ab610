#pragma once

#include <string>

namespace logging {

// The directory of the framework's shared log: the live and the rotated files, the level flag files, the redirect file.
struct LogDirectory {
  std::string path;  // absolute, with no separator at its end
  char separator;    // between the parts of a path, and the one separator that the names of log files may hold

  // The path of the file with this name in the directory.
  std::string File(const std::string& name) const { return path + separator + name; }
};

// The one directory of the process; the same object at every call. Safe to call during static initialisation. The
// target `log_directory` defines it with the directory chosen at configure time; a test program brings its own.
const LogDirectory& GetLogDirectory();

}  // namespace logging
