#include "logging/posix_file.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace logging {
namespace {

// Access lists need no look of their own: a right to write that one gives shows in the bits of the group.
bool OthersMayAddNames(const struct stat& directory) {
  const bool isTrusted = directory.st_uid == 0 || directory.st_uid == geteuid();
  return !isTrusted || (directory.st_mode & (S_IWGRP | S_IWOTH)) != 0;
}

// In a directory that a group shares, and whose files are the group's, so is what it may do with a file that this process has
// just made. The umask would leave the log to whoever wrote first.
void ShareWithGroup(const text::Descriptor& file, const struct stat& made, const struct stat& directory) {
  const bool isGroups = (directory.st_mode & S_ISGID) != 0 && (directory.st_mode & S_IWGRP) != 0;
  if (!isGroups || made.st_gid != directory.st_gid || made.st_uid != geteuid() || made.st_size != 0) return;
  static_cast<void>(fchmod(file.Get(), (made.st_mode & 07777) | S_IRGRP | S_IWGRP));
}

}  // namespace

text::Descriptor OpenRegularFile(const std::string& path, int flags) {
  // The file is opened by the open directory: what was found out about that holds for no other.
  const std::size_t name = path.rfind('/') + 1;  // 0 without a directory
  const text::Descriptor directory(
      open(name == 0 ? "." : path.substr(0, name).c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  struct stat directoryStatus, status;
  if (!directory || fstat(directory.Get(), &directoryStatus) != 0) return text::Descriptor();
  const bool isShared = OthersMayAddNames(directoryStatus);
  constexpr mode_t kMode = 0666;  // the umask takes from it
  text::Descriptor file(openat(directory.Get(), path.c_str() + name,
                               flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY | (isShared ? O_NOFOLLOW : 0), kMode));
  if (!file || fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode)) return text::Descriptor();
  if (isShared && status.st_nlink > 1) return text::Descriptor();
  if ((flags & O_CREAT) != 0) ShareWithGroup(file, status, directoryStatus);
  return file;
}

}  // namespace logging
