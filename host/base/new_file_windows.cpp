#include <windows.h>

#include <algorithm>

#include "host/base/new_file.h"
#include "host/base/system.h"

namespace host {
namespace {

bool WriteAll(HANDLE handle, std::string_view content) {
  constexpr std::size_t kMostAtOnce = 1 << 24;
  while (!content.empty()) {
    DWORD written = 0;
    const auto size = static_cast<DWORD>(std::min(content.size(), kMostAtOnce));
    if (!WriteFile(handle, content.data(), size, &written, nullptr)) return false;
    content.remove_prefix(written);
  }
  return true;
}

}  // namespace

std::error_code MakeNewFile(const std::filesystem::path& file) {
  const HANDLE handle =
      CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return LastError();
  CloseHandle(handle);
  return {};
}

std::error_code OverwriteFile(const std::filesystem::path& file, std::string_view content) {
  // Of a link the link itself would be opened, which takes no content.
  const HANDLE handle = CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, TRUNCATE_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return LastError();
  std::error_code error;
  if (!WriteAll(handle, content)) error = LastError();
  if (!CloseHandle(handle) && !error) error = LastError();
  return error;
}

}  // namespace host
