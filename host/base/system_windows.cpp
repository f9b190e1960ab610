#include <fcntl.h>
#include <io.h>
#include <windows.h>
// The shell's functions need the types above.
#include <shellapi.h>

#include "host/base/system.h"
#include "text/utf.h"

namespace host {

std::vector<std::string> Arguments(int, const char* const*) {
  // Contracts and replies go through standard input and output byte for byte, and all text is UTF-8.
  _setmode(_fileno(stdin), _O_BINARY);
  _setmode(_fileno(stdout), _O_BINARY);
  SetConsoleOutputCP(CP_UTF8);
  // The narrow arguments have lost what the system's code page can't say.
  std::vector<std::string> arguments;
  int count = 0;
  wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &count);
  for (int i = 1; i < count; ++i) {
    const std::wstring argument = wide[i];
    arguments.push_back(text::ToUtf8(std::u16string(argument.begin(), argument.end())));
  }
  LocalFree(wide);
  return arguments;
}

std::filesystem::path ProgramFile() {
  std::wstring path(32768, L'\0');  // the longest path there is
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return path;
}

std::error_code LastError() { return {static_cast<int>(GetLastError()), std::system_category()}; }

std::int64_t ProcessId() { return GetCurrentProcessId(); }

std::string MachineName() {
  std::wstring name(MAX_COMPUTERNAME_LENGTH + 1, L'\0');
  auto size = static_cast<DWORD>(name.size());
  name.resize(GetComputerNameW(name.data(), &size) != 0 ? size : 0);
  return text::ToUtf8(std::u16string(name.begin(), name.end()));
}

bool IsTerminal(std::FILE* stream) { return _isatty(_fileno(stream)) != 0; }

int TerminalWidth(std::FILE* stream) {
  CONSOLE_SCREEN_BUFFER_INFO info;
  const auto console = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
  if (!GetConsoleScreenBufferInfo(console, &info)) return 80;
  return info.srWindow.Right - info.srWindow.Left + 1;
}

bool TerminalIsUtf8() { return GetConsoleOutputCP() == CP_UTF8; }

}  // namespace host
