#include <cerrno>
#include <cstdio>

#include "host/base/log_directory.h"

namespace host {

const LogPlace& ChosenLog() {
  static const LogPlace place = {ZQRMT_LOG_DIRECTORY, ""};
  return place;
}

// Only the attempt tells: who may write is in access lists.
std::error_code LogWriteError(const std::filesystem::path& directory) {
  std::FILE* const log = _wfopen((directory / kLogFileName).c_str(), L"ab");
  if (log == nullptr) return {errno, std::generic_category()};
  std::fclose(log);
  return {};
}

// What it is was held to the same rule when rmthost was built.
bool IsLogDirectoryName(const std::filesystem::path&) { return true; }

}  // namespace host
