#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <optional>

#include <fmt/format.h>

#include "host/base/failure.h"
#include "host/restoring/private_folder.h"

namespace host {
namespace {

namespace fs = std::filesystem;

constexpr const char* kFolder = "rmthost";

// An absolute path in the environment; other values are to be ignored, as the specification of these variables says.
std::optional<fs::path> Named(const char* variable) {
  const char* const value = std::getenv(variable);
  return value != nullptr && *value == '/' ? std::optional<fs::path>(value) : std::nullopt;
}

fs::path Home() {
  if (const std::optional<fs::path> home = Named("HOME")) return *home;
  const passwd* const entry = getpwuid(geteuid());
  return entry != nullptr ? entry->pw_dir : "/";
}

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
  const fs::path folder = Named("XDG_STATE_HOME").value_or(Home() / ".local" / "state") / kFolder;
  if (Make(folder)) return folder;
  throw Failure(ExitCode::kBroken,
                fmt::format("There can't be a folder '{}': {}.", folder.string(), std::strerror(errno)),
                "Name another with XDG_STATE_HOME, one that is yours alone to write to.");
}

fs::path SessionFolder() {
  const std::optional<fs::path> session = Named("XDG_RUNTIME_DIR");
  return session.has_value() && Make(*session / kFolder) ? *session / kFolder : StateFolder();
}

}  // namespace host
