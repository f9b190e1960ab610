#include <sys/ioctl.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

#include "host/base/system.h"
#include "text/utf.h"

namespace host {

std::vector<std::string> Arguments(int argc, const char* const* argv) {
  return {argv + (argc > 0 ? 1 : 0), argv + argc};
}

std::filesystem::path ProgramFile() {
  std::error_code unknown;
  return std::filesystem::read_symlink("/proc/self/exe", unknown);
}

std::error_code LastError() { return {errno, std::generic_category()}; }

std::int64_t ProcessId() { return getpid(); }

std::string MachineName() {
  utsname names{};
  return uname(&names) == 0 ? names.nodename : "";
}

bool IsTerminal(std::FILE* stream) { return isatty(fileno(stream)) == 1; }

int TerminalWidth(std::FILE* stream) {
  winsize size{};
  return ioctl(fileno(stream), TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

bool TerminalIsUtf8() {
  // The environment is read, and setlocale isn't called: the module converts its texts in the process's C locale.
  for (const char* variable : {"LC_ALL", "LC_CTYPE", "LANG"}) {
    const char* value = std::getenv(variable);
    if (value == nullptr || *value == '\0') continue;
    const std::string locale = text::LowerAscii(value);
    return locale.find("utf-8") != std::string::npos || locale.find("utf8") != std::string::npos;
  }
  return false;
}

}  // namespace host
