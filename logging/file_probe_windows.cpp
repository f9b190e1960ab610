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

struct Found {
  DWORD attributes;
  DWORD sizeHigh, sizeLow;
};

// Looks at the file that a link leads to. If it can't be opened, GetLastError says why.
bool LookAtTarget(const std::filesystem::path& link, Found& found) {
  const HANDLE target =
      CreateFileW(link.c_str(), FILE_READ_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                  OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (target == INVALID_HANDLE_VALUE) return false;
  BY_HANDLE_FILE_INFORMATION information{};
  GetFileInformationByHandle(target, &information);
  CloseHandle(target);
  found = {information.dwFileAttributes, information.nFileSizeHigh, information.nFileSizeLow};
  return true;
}

// Asks the system itself, because the C runtime folds the system's errors into fewer and not every standard library
// tells them apart.
bool Look(const std::filesystem::path& path, Found& found) {
  WIN32_FILE_ATTRIBUTE_DATA data;
  if (GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data)) {
    found = {data.dwFileAttributes, data.nFileSizeHigh, data.nFileSizeLow};
    if ((found.attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0 || LookAtTarget(path, found)) return true;
  }
  const DWORD error = GetLastError();
  if (MeansNotFound(error)) return false;
  throw std::filesystem::filesystem_error("exists", path,
                                          std::error_code(static_cast<int>(error), std::system_category()));
}

}  // namespace

bool Exists(const std::filesystem::path& path) {
  Found found;
  return Look(path, found);
}

std::optional<std::uintmax_t> SizeIfThere(const std::filesystem::path& path) {
  Found found;
  if (!Look(path, found)) return std::nullopt;
  if ((found.attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
    throw std::filesystem::filesystem_error("file_size", path, std::make_error_code(std::errc::is_a_directory));
  }
  return std::uintmax_t{found.sizeHigh} << 32 | found.sizeLow;
}

void EnsureDirectory(const std::filesystem::path& path) {
  std::error_code error;
  std::filesystem::create_directory(path, error);
  if (error) throw std::filesystem::filesystem_error("create_directory", path, error);
}

}  // namespace logging
