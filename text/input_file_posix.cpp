#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

#include "text/descriptor_posix.h"
#include "text/input_file.h"

namespace text {
namespace {

std::string LastProblem() { return std::generic_category().message(errno); }

}  // namespace

FileBytes ReadRegularFile(const std::filesystem::path& file, std::uintmax_t start, std::size_t most) {
  FileBytes content;
  // A pipe is opened without waiting for its writer.
  const Descriptor opened(open(file.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  struct stat status {};
  if (!opened || fstat(opened.Get(), &status) != 0) {
    content.problem = LastProblem();
  } else if (!S_ISREG(status.st_mode)) {
    content.problem = kNoRegularFile;
  }
  char chunk[16384];
  while (content.problem.empty() && !content.isCut) {
    const ssize_t got = pread(opened.Get(), chunk, sizeof chunk, static_cast<off_t>(start + content.bytes.size()));
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) content.problem = LastProblem();
    if (got <= 0) break;
    const std::size_t taken = std::min(static_cast<std::size_t>(got), most - content.bytes.size());
    content.bytes.append(chunk, taken);
    content.isCut = taken < static_cast<std::size_t>(got);
  }
  return content;
}

}  // namespace text
