#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace host {

// What is written to the module's log in the object's life. The log is shared: lines of other programs can be among
// them.
class LogExcerpt {
 public:
  explicit LogExcerpt(std::filesystem::path logFile);

  // The lines so far, without their ends, oldest first. A log that was rotated once meanwhile is followed. Of each file 8 MiB
  // at most are read, and a last line says so. There are none where no regular file is.
  std::vector<std::string> Lines() const;

 private:
  std::filesystem::path logFile_;
  std::uintmax_t start_;  // bytes
};

}  // namespace host
