#pragma once

#include <string>

namespace logging {

// The directory of the framework's shared log: the live and the rotated files, the level flag files, the redirect file.
struct LogDirectory {
  std::string path;  // absolute, with no separator at its end
  char separator;    // between the parts of a path; the names of log files may hold this one and no other

  // The path of the file with this name in the directory.
  std::string File(const std::string& name) const { return path + separator + name; }
};

// The log directory of the process: the one chosen at configure time or, except on Windows, the one that the
// environment variable ZQRMT_LOG_DIRECTORY names at the first call. Always the same object. May be called during
// static initialisation.
const LogDirectory& GetLogDirectory();

}  // namespace logging
