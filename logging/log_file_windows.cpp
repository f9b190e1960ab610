#include <windows.h>

#include <exception>
#include <filesystem>
#include <fstream>

#include "logging/log_file.h"

namespace logging {
namespace {

// As a file in text mode takes it.
std::string WithCarriageReturns(const std::string& line) {
  std::string text;
  for (const char c : line) {
    if (c == '\n') text += '\r';
    text += c;
  }
  return text;
}

}  // namespace

std::string ReadWholeFile(const std::string& path) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) return {};
  std::ifstream file(path);
  std::string contents(kMaxReadBytes, '\0');
  file.read(contents.data(), static_cast<std::streamsize>(contents.size()));
  contents.resize(static_cast<std::size_t>(file.gcount()));
  return contents;
}

// With the right to append and no other the system itself writes at the end, wherever that is by then. The C library would
// look for the end first, and two processes could find the same. Other processes may rename the file while it is open.
void AppendLine(const std::string& path, const std::string& line) {
  try {
    const std::string text = WithCarriageReturns(line);
    const HANDLE file =
        CreateFileA(path.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                    OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return;
    DWORD written = 0;
    if (GetFileType(file) == FILE_TYPE_DISK) {
      WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    }
    CloseHandle(file);
  } catch (const std::exception&) {
    return;
  }
}

}  // namespace logging
