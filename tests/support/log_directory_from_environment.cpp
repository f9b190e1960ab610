#include <cstdlib>
#include <filesystem>

#include "logging/log_directory.h"

// For test programs on Windows: the directory that ZQRMT_LOG_DIRECTORY names at the first call, as in the product
// itself on other systems. Without that variable it is a directory that isn't there and can't be created.
const logging::LogDirectory& logging::GetLogDirectory() {
  static const char* const path = std::getenv("ZQRMT_LOG_DIRECTORY");
  static const LogDirectory directory{path != nullptr ? path : "Z:\\ZQRMT_LOG_DIRECTORY is not set\\log",
                                      static_cast<char>(std::filesystem::path::preferred_separator)};
  return directory;
}
