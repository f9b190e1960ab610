#include "logging/posix_file.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace logging {
namespace {

// Access lists need no look of their own: a right to write that one gives shows in the bits of the group.
bool OthersMayAddNames(const PosixFile& directory) {
  struct stat status;
  if (fstat(directory.Get(), &status) != 0) return true;
  const bool isTrusted = status.st_uid == 0 || status.st_uid == geteuid();
  return !isTrusted || (status.st_mode & (S_IWGRP | S_IWOTH)) != 0;
}

}  // namespace

PosixFile OpenRegularFile(const std::string& path, int flags) {
  // The file is opened by the open directory: what was found out about that holds for no other.
  const std::size_t name = path.rfind('/') + 1;  // 0 without a directory
  const PosixFile directory(open(name == 0 ? "." : path.substr(0, name).c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  if (!directory) return PosixFile();
  const bool isShared = OthersMayAddNames(directory);
  constexpr mode_t kMode = 0666;  // the umask takes from it
  PosixFile file(openat(directory.Get(), path.c_str() + name,
                        flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY | (isShared ? O_NOFOLLOW : 0), kMode));
  struct stat status;
  if (!file || fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode)) return PosixFile();
  if (isShared && status.st_nlink > 1) return PosixFile();
  return file;
}

}  // namespace logging
