#include <windows.h>

#include <memory>
#include <type_traits>

#include "logging/rotation_turn.h"

namespace logging {
namespace {

struct Close {
  void operator()(HANDLE file) const { CloseHandle(file); }
};
using File = std::unique_ptr<std::remove_pointer_t<HANDLE>, Close>;  // null for none

// Lets everybody else read, write and rename the file.
File Open(const std::string& path, DWORD access) {
  const HANDLE file = CreateFileA(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  return File(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

// A lock keeps others out of the bytes that it is on, so it is on one that no log ever gets.
bool IsTakenByAnother(const File& file) {
  OVERLAPPED place{};
  place.OffsetHigh = 0x7FFFFFFF;
  return !LockFileEx(file.get(), LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place) &&
         (GetLastError() == ERROR_LOCK_VIOLATION || GetLastError() == ERROR_IO_PENDING);
}

bool LeadsTo(const std::string& path, const File& file) {
  const File there = Open(path, FILE_READ_ATTRIBUTES);
  BY_HANDLE_FILE_INFORMATION one, other;
  return there != nullptr && GetFileInformationByHandle(there.get(), &one) &&
         GetFileInformationByHandle(file.get(), &other) && one.dwVolumeSerialNumber == other.dwVolumeSerialNumber &&
         one.nFileIndexHigh == other.nFileIndexHigh && one.nFileIndexLow == other.nFileIndexLow;
}

}  // namespace

void RotateInTurn(const std::string& path, void (*rotate)(const std::string& path)) {
  const File file = Open(path, GENERIC_WRITE);
  if (file != nullptr && (IsTakenByAnother(file) || !LeadsTo(path, file))) return;
  rotate(path);
}

}  // namespace logging
