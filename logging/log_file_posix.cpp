#include "logging/log_file.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <exception>

#include "logging/posix_file.h"

namespace logging {
namespace {

// Takes the last `count` bytes off again, which are the beginning of a line that there was no room for. If another process
// has written behind them, they stay.
void CutBack(const text::Descriptor& file, off_t count) {
  const off_t end = lseek(file.Get(), 0, SEEK_CUR);
  struct stat status;
  if (end < count || fstat(file.Get(), &status) != 0 || status.st_size != end) return;
  // A failure leaves the half line. There is nobody to tell.
  static_cast<void>(!ftruncate(file.Get(), end - count));
}

}  // namespace

std::string ReadWholeFile(const std::string& path) {
  const CancellationHeldOff untilClosed;
  const text::Descriptor file = OpenRegularFile(path, O_RDONLY);
  std::string contents(kMaxReadBytes, '\0');
  std::size_t size = 0;
  while (size < contents.size()) {
    const ssize_t count = read(file.Get(), &contents[size], contents.size() - size);
    if (count <= 0) break;
    size += static_cast<std::size_t>(count);
  }
  contents.resize(size);
  return contents;
}

void AppendLine(const std::string& path, const std::string& line) {
  const CancellationHeldOff untilClosed;
  try {
    const text::Descriptor file = OpenRegularFile(path, O_WRONLY | O_APPEND | O_CREAT);
    if (!file) return;
    ssize_t written;
    do {
      written = write(file.Get(), line.data(), line.size());
    } while (written < 0 && errno == EINTR);
    if (written > 0 && static_cast<std::size_t>(written) < line.size()) CutBack(file, written);
  } catch (const std::exception&) {
    return;
  }
}

}  // namespace logging
