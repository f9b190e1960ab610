#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include <fmt/core.h>

#include "host/base/failure.h"
#include "host/base/system.h"
#include "host/restoring/locked_file.h"
#include "text/descriptor_posix.h"

namespace host {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMost = 1 << 20;

Failure Refused(const fs::path& file, const std::string& reason) {
  return {ExitCode::kBroken, fmt::format("'{}' can't be used: {}.", file.string(), reason),
          "Look at it, and take it away when nobody needs it."};
}

Failure Refused(const fs::path& file) { return Refused(file, LastError().message()); }

std::string ReadAll(int descriptor) {
  std::string content(kMost, '\0');
  std::size_t size = 0;
  while (size < kMost) {
    const ssize_t got = pread(descriptor, content.data() + size, kMost - size, static_cast<off_t>(size));
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) break;
    size += static_cast<std::size_t>(got);
  }
  content.resize(size);
  return content;
}

// Nothing that is opened here can hang: a pipe without a writer is opened without waiting, and then refused.
int Open(const fs::path& file, int flags) {
  return open(file.c_str(), flags | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0600);
}

void RequireOurs(const fs::path& file, int descriptor) {
  struct stat status {};
  if (fstat(descriptor, &status) != 0) throw Refused(file);
  if (!S_ISREG(status.st_mode)) throw Refused(file, "it isn't a regular file");
  if (status.st_uid != geteuid() || (status.st_mode & 022) != 0) {
    throw Refused(file, "others than you may have written it");
  }
}

void SyncFolderOf(const fs::path& file) {
  const text::Descriptor folder(open(file.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder) fsync(folder.Get());
}

}  // namespace

std::optional<LockedFile> LockedFile::Hold(const fs::path& file, bool isNew) {
  const int descriptor = Open(file, isNew ? O_RDWR | O_CREAT | O_EXCL : O_RDWR);
  if (descriptor < 0 && errno == ENOENT) return std::nullopt;
  if (descriptor < 0) throw Refused(file);
  LockedFile held(file, descriptor);
  RequireOurs(file, descriptor);
  if (flock(descriptor, LOCK_EX | LOCK_NB) != 0) return std::nullopt;
  // Whoever held it before may have taken it away, and another file may be there by now.
  struct stat ours {
  }, there{};
  const bool isStillThere = fstat(descriptor, &ours) == 0 && lstat(file.c_str(), &there) == 0 &&
                            ours.st_ino == there.st_ino && ours.st_dev == there.st_dev;
  return isStillThere ? std::optional<LockedFile>(std::move(held)) : std::nullopt;
}

std::optional<LockedFile> LockedFile::HoldOrMake(const fs::path& file) {
  if (!text::Descriptor(Open(file, O_RDWR | O_CREAT))) throw Refused(file);
  return Hold(file, false);
}

LockedFile::~LockedFile() {
  if (handle_ >= 0) close(static_cast<int>(handle_));
}

std::string LockedFile::Read() const { return ReadAll(static_cast<int>(handle_)); }

void LockedFile::Write(const std::string& content) const {
  const int descriptor = static_cast<int>(handle_);
  if (ftruncate(descriptor, 0) != 0) throw Refused(path_);
  for (std::size_t at = 0; at < content.size();) {
    const ssize_t put = pwrite(descriptor, content.data() + at, content.size() - at, static_cast<off_t>(at));
    if (put < 0 && errno != EINTR) throw Refused(path_);
    if (put > 0) at += static_cast<std::size_t>(put);
  }
  if (fsync(descriptor) != 0) throw Refused(path_);
}

void LockedFile::Rename(const fs::path& file) {
  if (rename(path_.c_str(), file.c_str()) != 0) throw Refused(file);
  path_ = file;
  SyncFolderOf(file);
}

void LockedFile::Remove() {
  unlink(path_.c_str());
  SyncFolderOf(path_);
}

std::string ReadHeldFile(const fs::path& file) {
  const text::Descriptor opened(Open(file, O_RDONLY));
  struct stat status {};
  const bool isFile = opened && fstat(opened.Get(), &status) == 0 && S_ISREG(status.st_mode);
  return isFile ? ReadAll(opened.Get()) : "";
}

}  // namespace host
