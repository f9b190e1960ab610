#include "logging/file_probe.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <system_error>

#include "logging/posix_file.h"

namespace logging {
namespace {

[[noreturn]] void Raise(const char* operation, const std::filesystem::path& path, int error) {
  throw std::filesystem::filesystem_error(operation, path, std::error_code(error, std::generic_category()));
}

bool Look(const std::filesystem::path& path, struct stat& found) {
  if (stat(path.c_str(), &found) == 0) return true;
  if (errno != ENOENT && errno != ENOTDIR) Raise("exists", path, errno);
  return false;
}

}  // namespace

bool Exists(const std::filesystem::path& path) {
  struct stat found;
  return Look(path, found);
}

std::optional<std::uintmax_t> SizeIfThere(const std::filesystem::path& path) {
  struct stat found;
  if (!Look(path, found)) return std::nullopt;
  if (!S_ISREG(found.st_mode)) Raise("file_size", path, S_ISDIR(found.st_mode) ? EISDIR : ENOTSUP);
  return static_cast<std::uintmax_t>(found.st_size);
}

void EnsureDirectory(const std::filesystem::path& path) {
  constexpr mode_t kMode = 0755;
  if (mkdir(path.c_str(), kMode) != 0) {
    const int error = errno;
    struct stat found;
    if (error == EEXIST && stat(path.c_str(), &found) == 0 && S_ISDIR(found.st_mode)) return;
    Raise("create_directory", path, error);
  }
  // By the open directory, so that no link put in its place meanwhile can lead this elsewhere.
  const CancellationHeldOff untilClosed;
  const text::Descriptor made(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  if (made) fchmod(made.Get(), kMode);
}

}  // namespace logging
