#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "host/base/new_file.h"
#include "host/base/system.h"
#include "text/descriptor_posix.h"

namespace host {
namespace {

bool WriteAll(int descriptor, std::string_view content) {
  while (!content.empty()) {
    const ssize_t written = write(descriptor, content.data(), content.size());
    if (written < 0 && errno != EINTR) return false;
    if (written > 0) content.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

}  // namespace

std::error_code MakeNewFile(const std::filesystem::path& file) {
  // Who may read it is up to the umask, as for any file that a person has a program make.
  const text::Descriptor made(open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666));
  return made ? std::error_code() : LastError();
}

std::error_code OverwriteFile(const std::filesystem::path& file, std::string_view content) {
  const int descriptor = open(file.c_str(), O_WRONLY | O_TRUNC | O_NOFOLLOW | O_CLOEXEC);
  if (descriptor < 0) return LastError();
  std::error_code error;
  if (!WriteAll(descriptor, content)) error = LastError();
  // A network's file system may tell only now that there is no room.
  if (close(descriptor) != 0 && !error) error = LastError();
  return error;
}

}  // namespace host
