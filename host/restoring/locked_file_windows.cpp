#include <windows.h>

#include <fmt/core.h>

#include <system_error>
#include <utility>

#include "host/base/failure.h"
#include "host/base/system.h"
#include "host/restoring/locked_file.h"
#include "text/utf.h"

namespace host {
namespace {

namespace fs = std::filesystem;

constexpr DWORD kMost = 1 << 20;

Failure Refused(const fs::path& file) {
  const std::error_code reason = LastError();
  return {ExitCode::kBroken, fmt::format("'{}' can't be used: {}.", text::Utf8FromPath(file), reason.message()),
          "Look at it, and take it away when nobody needs it."};
}

// Held as long as it is open: nobody else may open it for writing meanwhile. A link itself is opened, and is no file.
HANDLE Open(const fs::path& file, DWORD disposition) {
  return CreateFileW(file.c_str(), GENERIC_READ | GENERIC_WRITE | DELETE, FILE_SHARE_READ, nullptr, disposition,
                     FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
}

std::string ReadAll(HANDLE handle) {
  std::string content(kMost, '\0');
  DWORD size = 0;
  SetFilePointer(handle, 0, nullptr, FILE_BEGIN);
  if (!ReadFile(handle, content.data(), kMost, &size, nullptr)) size = 0;
  content.resize(size);
  return content;
}

HANDLE FileOf(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

std::optional<std::intptr_t> Held(const fs::path& file, DWORD disposition) {
  const HANDLE handle = Open(file, disposition);
  if (handle != INVALID_HANDLE_VALUE) return reinterpret_cast<std::intptr_t>(handle);
  const DWORD error = GetLastError();
  if (error == ERROR_SHARING_VIOLATION || error == ERROR_FILE_NOT_FOUND || error == ERROR_DELETE_PENDING) {
    return std::nullopt;
  }
  throw Refused(file);
}

}  // namespace

std::optional<LockedFile> LockedFile::Hold(const fs::path& file, bool isNew) {
  const std::optional<std::intptr_t> handle = Held(file, isNew ? CREATE_NEW : OPEN_EXISTING);
  if (!handle.has_value()) return std::nullopt;
  return LockedFile(file, *handle);
}

std::optional<LockedFile> LockedFile::HoldOrMake(const fs::path& file) {
  const std::optional<std::intptr_t> handle = Held(file, OPEN_ALWAYS);
  if (!handle.has_value()) return std::nullopt;
  return LockedFile(file, *handle);
}

LockedFile::~LockedFile() {
  if (handle_ != -1) CloseHandle(FileOf(handle_));
}

std::string LockedFile::Read() const { return ReadAll(FileOf(handle_)); }

void LockedFile::Write(const std::string& content) const {
  const HANDLE handle = FileOf(handle_);
  DWORD written = 0;
  SetFilePointer(handle, 0, nullptr, FILE_BEGIN);
  const bool isWhole = SetEndOfFile(handle) != 0 &&
                       WriteFile(handle, content.data(), static_cast<DWORD>(content.size()), &written, nullptr) != 0 &&
                       written == content.size() && FlushFileBuffers(handle) != 0;
  if (!isWhole) throw Refused(path_);
}

void LockedFile::Rename(const fs::path& file) {
  const std::wstring name = file.wstring();
  std::string buffer(sizeof(FILE_RENAME_INFO) + name.size() * sizeof(wchar_t), '\0');
  auto* const info = reinterpret_cast<FILE_RENAME_INFO*>(buffer.data());
  info->FileNameLength = static_cast<DWORD>(name.size() * sizeof(wchar_t));
  name.copy(info->FileName, name.size());
  if (!SetFileInformationByHandle(FileOf(handle_), FileRenameInfo, info, static_cast<DWORD>(buffer.size()))) {
    throw Refused(file);
  }
  path_ = file;
}

void LockedFile::Remove() {
  FILE_DISPOSITION_INFO info{TRUE};
  SetFileInformationByHandle(FileOf(handle_), FileDispositionInfo, &info, sizeof info);
}

std::string ReadHeldFile(const fs::path& file) {
  const HANDLE handle =
      CreateFileW(file.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return "";
  std::string content = ReadAll(handle);
  CloseHandle(handle);
  return content;
}

}  // namespace host
