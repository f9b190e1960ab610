#include "host/base/xdg_folders.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

namespace host {
namespace {

namespace fs = std::filesystem;

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

}  // namespace

fs::path StateHome() { return Named("XDG_STATE_HOME").value_or(Home() / ".local" / "state"); }

std::optional<fs::path> RuntimeFolder() { return Named("XDG_RUNTIME_DIR"); }

}  // namespace host
