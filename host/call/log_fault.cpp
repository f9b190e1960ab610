#include "host/call/log_fault.h"

#include <fmt/core.h>

#include "host/base/log_directory.h"
#include "text/utf.h"

namespace host {
namespace {

namespace fs = std::filesystem;

std::string Reason(const fs::path& directory) {
  if (!IsLogDirectoryName(directory)) {
    return fmt::format("its logger takes only {} in a path, and writes to '{}' in the current directory instead",
                       kLogLetters, kLogFileName);
  }
  std::error_code unknown;
  if (const std::error_code error = LogWriteError(directory)) return error.message();
  if (!fs::is_directory(directory, unknown)) return "there is no such directory";
  const fs::path file = directory / kLogFileName;
  if (fs::is_symlink(file, unknown) || (fs::is_regular_file(file, unknown) && fs::hard_link_count(file, unknown) > 1)) {
    return "the log is a link, and in a directory that others may write to the module follows none";
  }
  // A line fits into a block that isn't there.
  constexpr std::uintmax_t kBlock = 4096;
  if (fs::space(directory, unknown).available < kBlock) return "the disk is full";
  for (const char* level : {"notification", "warning", "error", "critical"}) {
    const std::string flag = std::string(level) + ".flg";
    if (fs::exists(directory / flag, unknown))
      return fmt::format("the flag file '{}' there switches lower lines off", flag);
  }
  return "the log can be written, so the module itself has written nothing";
}

}  // namespace

std::string LogFault(const fs::path& directory) {
  return fmt::format("Nothing of this call came to '{}': {}.", text::Utf8FromPath(directory / kLogFileName),
                     Reason(directory));
}

}  // namespace host
