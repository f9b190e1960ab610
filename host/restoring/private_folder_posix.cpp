#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include <fmt/core.h>

#include "host/base/failure.h"
#include "host/base/xdg_folders.h"
#include "host/restoring/private_folder.h"

namespace host {
namespace {

namespace fs = std::filesystem;

constexpr const char* kFolder = "rmthost";

// Makes the folder, and those around it, for this user alone. False when it isn't this user's, as after "sudo -E".
bool Make(const fs::path& folder) {
  std::error_code error;
  fs::create_directories(folder.parent_path(), error);
  if (mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST) return false;
  struct stat status {};
  if (lstat(folder.c_str(), &status) != 0) return false;
  const bool isOurs = S_ISDIR(status.st_mode) && status.st_uid == geteuid() && (status.st_mode & 022) == 0;
  if (!isOurs) errno = EPERM;
  return isOurs;
}

}  // namespace

fs::path StateFolder() {
  const fs::path folder = StateHome() / kFolder;
  if (Make(folder)) return folder;
  throw Failure(ExitCode::kBroken,
                fmt::format("There can't be a folder '{}': {}.", folder.string(), std::strerror(errno)),
                "Name another with XDG_STATE_HOME, one that is yours alone to write to.");
}

fs::path SessionFolder() {
  const std::optional<fs::path> session = RuntimeFolder();
  return session.has_value() && Make(*session / kFolder) ? *session / kFolder : StateFolder();
}

}  // namespace host
