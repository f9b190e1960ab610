#include <windows.h>

#include <system_error>

#include "logging/file_probe.h"

namespace logging {
namespace {

bool MeansNotFound(DWORD error) {
  switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_BAD_NETPATH:
    case ERROR_INVALID_NAME:
    case ERROR_DIRECTORY: return true;
    default: return false;
  }
}

// Whether the file that a link leads to can be opened. If not, GetLastError says why.
bool OpensTarget(const std::filesystem::path& link) {
  const HANDLE target =
      CreateFileW(link.c_str(), FILE_READ_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                  OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (target == INVALID_HANDLE_VALUE) return false;
  CloseHandle(target);
  return true;
}

}  // namespace

// Asks the system itself, because the C runtime folds the system's errors into fewer and not every standard library
// tells them apart.
bool Exists(const std::filesystem::path& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  const bool isThere = attributes != INVALID_FILE_ATTRIBUTES;
  if (isThere && ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0 || OpensTarget(path))) return true;
  const DWORD error = GetLastError();
  if (MeansNotFound(error)) return false;
  throw std::filesystem::filesystem_error("exists", path,
                                          std::error_code(static_cast<int>(error), std::system_category()));
}

}  // namespace logging
