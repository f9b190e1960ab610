#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

#include "logging/posix_file.h"
#include "logging/rotation_turn.h"

namespace logging {
namespace {

// The lock is the open file's, not the process's: closing another descriptor of the file doesn't end it.
bool IsTakenByAnother(const text::Descriptor& file) {
  struct flock whole {};
  whole.l_type = F_WRLCK;
  whole.l_whence = SEEK_SET;
  return fcntl(file.Get(), F_OFD_SETLK, &whole) != 0 && (errno == EAGAIN || errno == EACCES);
}

bool LeadsTo(const std::string& path, const text::Descriptor& file) {
  struct stat there, opened;
  return stat(path.c_str(), &there) == 0 && fstat(file.Get(), &opened) == 0 && there.st_dev == opened.st_dev &&
         there.st_ino == opened.st_ino;
}

}  // namespace

void RotateInTurn(const std::string& path, void (*rotate)(const std::string& path)) {
  const CancellationHeldOff untilClosed;
  const text::Descriptor file = OpenRegularFile(path, O_WRONLY);
  if (file && (IsTakenByAnother(file) || !LeadsTo(path, file))) return;
  rotate(path);
}

}  // namespace logging
