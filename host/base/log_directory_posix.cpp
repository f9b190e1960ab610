#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>

#include <fmt/core.h>

#include "host/base/log_directory.h"
#include "host/base/xdg_folders.h"

namespace host {
namespace {

namespace fs = std::filesystem;

constexpr const char* kVariable = "ZQRMT_LOG_DIRECTORY";

std::error_code AccessError(const fs::path& path, int mode) {
  if (faccessat(AT_FDCWD, path.c_str(), mode, AT_EACCESS) == 0) return {};
  return {errno, std::generic_category()};
}

LogPlace Choose() {
  const char* const named = secure_getenv(kVariable);
  if (named != nullptr && *named != '\0') return {named, ""};
  const fs::path shared = ZQRMT_LOG_DIRECTORY;
  const std::error_code error = LogWriteError(shared);
  if (!error) return {shared, ""};
  const std::string reason = fmt::format("this user can't write to '{}': {}", shared.string(), error.message());

  const fs::path own = StateHome() / "ZQOrb";
  if (!IsLogDirectoryName(own)) {
    return {
        shared,
        fmt::format("There is no place for the log: {}, and the module's logger takes only {} in a path, unlike '{}'. "
                    "Name a directory in {}.",
                    reason, kLogLetters, own.string(), kVariable)};
  }
  std::error_code notMade;
  fs::create_directories(own, notMade);
  if (!notMade) notMade = LogWriteError(own);
  if (notMade) {
    return {shared, fmt::format("There is no place for the log: {}; and '{}': {}. Name a directory in {}.", reason,
                                own.string(), notMade.message(), kVariable)};
  }
  setenv(kVariable, own.c_str(), 1);
  return {own, fmt::format("The log goes to '{}', because {}.", own.string(), reason)};
}

}  // namespace

const LogPlace& ChosenLog() {
  static const LogPlace place = Choose();
  return place;
}

std::error_code LogWriteError(const fs::path& directory) {
  const std::error_code inDirectory = AccessError(directory, W_OK | X_OK);
  if (inDirectory == std::errc::no_such_file_or_directory) return AccessError(directory.parent_path(), W_OK | X_OK);
  if (inDirectory) return inDirectory;
  const std::error_code inFile = AccessError(directory / kLogFileName, W_OK);
  return inFile == std::errc::no_such_file_or_directory ? std::error_code() : inFile;
}

bool IsLogDirectoryName(const fs::path& directory) {
  const std::string name = directory.string();
  return std::all_of(name.begin(), name.end(), [](char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
           std::string_view(" -.:_/").find(c) != std::string_view::npos;
  });
}

}  // namespace host
