#include <windows.h>

#include <algorithm>
#include <memory>
#include <system_error>

#include "text/input_file.h"

namespace text {
namespace {

struct CloseIt {
  void operator()(void* handle) const {
    if (handle != INVALID_HANDLE_VALUE) CloseHandle(handle);
  }
};

std::string LastProblem() { return std::system_category().message(static_cast<int>(GetLastError())); }

}  // namespace

FileBytes ReadRegularFile(const std::filesystem::path& file, std::uintmax_t start, std::size_t most) {
  FileBytes content;
  // With the flag a folder is opened too, and refused with a better reason than that access is denied.
  const std::unique_ptr<void, CloseIt> opened(
      CreateFileW(file.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL | FILE_FLAG_BACKUP_SEMANTICS, nullptr));
  BY_HANDLE_FILE_INFORMATION about{};
  LARGE_INTEGER place;
  place.QuadPart = static_cast<LONGLONG>(start);
  if (opened.get() == INVALID_HANDLE_VALUE) {
    content.problem = LastProblem();
  } else if (GetFileType(opened.get()) != FILE_TYPE_DISK || !GetFileInformationByHandle(opened.get(), &about) ||
             (about.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
    content.problem = kNoRegularFile;
  } else if (!SetFilePointerEx(opened.get(), place, nullptr, FILE_BEGIN)) {
    content.problem = LastProblem();
  }
  char chunk[16384];
  while (content.problem.empty() && !content.isCut) {
    DWORD got = 0;
    if (!ReadFile(opened.get(), chunk, sizeof chunk, &got, nullptr)) content.problem = LastProblem();
    if (got == 0) break;
    const std::size_t taken = std::min(std::size_t{got}, most - content.bytes.size());
    content.bytes.append(chunk, taken);
    content.isCut = taken < got;
  }
  return content;
}

}  // namespace text
