#include <windows.h>

#include <algorithm>
#include <stdexcept>
#include <system_error>

#include "platform/windows/machine_front.h"
#include "tests/support/module_file.h"

namespace {

// Removes the log directory, creates its parent, and returns its path.
std::filesystem::path ClearedLogDirectory() {
  const std::filesystem::path log = ZQRMT_LOG_DIRECTORY;
  std::filesystem::remove_all(log);
  std::filesystem::create_directories(log.parent_path());
  return log;
}

}  // namespace

std::filesystem::path ModuleFile::LogDirectory(const std::filesystem::path&) { return ClearedLogDirectory(); }

// Loads the module as it is shipped. Its log directory was fixed when it was built.
ModuleFile::ModuleFile(const std::filesystem::path&) : handle_(LoadLibraryA(ZQRMT_TEST_MODULE)) {
  if (handle_ == nullptr) {
    throw std::runtime_error(std::system_category().message(static_cast<int>(GetLastError())));
  }
}

// The next test loads the module anew, and other programs find the system as it was before.
ModuleFile::~ModuleFile() {
  FreeLibrary(static_cast<HMODULE>(handle_));
  ClearedLogDirectory();
}

void* ModuleFile::Export(const char* name) const {
  // A machine that was started after the module was loaded isn't in front of it yet.
  virtual_audio::PutMachineInFrontOf(static_cast<HMODULE>(handle_));
  return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(handle_), name));
}

// In its C locale the Windows runtime has a narrow form for Latin-1 characters. On other systems a text that has one is
// logged as an empty one.
std::string ModuleFile::AsciiLine(const std::string& line) {
  const auto isLatin = [](char letter) { return static_cast<unsigned char>(letter) >= 0x80; };
  const auto latin = std::find_if(line.begin(), line.end(), isLatin);
  if (latin == line.end()) return line;
  const auto position = static_cast<std::size_t>(latin - line.begin());
  return line.substr(0, line.rfind(':', position) + 1) + line.substr(line.rfind(", ["));
}
