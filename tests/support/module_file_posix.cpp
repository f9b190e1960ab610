#include <dlfcn.h>

#include <stdexcept>

#include "tests/support/module_file.h"
#include "tests/support/process.h"

std::filesystem::path ModuleFile::LogDirectory(const std::filesystem::path& parent) { return parent / "log"; }

// Loads the module as it is shipped. Each test names a log directory of its own.
ModuleFile::ModuleFile(const std::filesystem::path& log) {
  SetEnvironment("ZQRMT_LOG_DIRECTORY", log.string());
  handle_ = dlopen(ZQRMT_TEST_MODULE, RTLD_NOW | RTLD_LOCAL);
  if (handle_ == nullptr) throw std::runtime_error(dlerror());
}

// The module stays loaded until the process ends, so that the leak checker can name its functions.
ModuleFile::~ModuleFile() = default;

void* ModuleFile::Export(const char* name) const { return dlsym(handle_, name); }

std::string ModuleFile::AsciiLine(const std::string& line) { return line; }
