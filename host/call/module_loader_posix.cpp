#include <dlfcn.h>

#include <stdexcept>

#include "host/call/module_loader.h"

namespace host {

LoadedLibrary::LoadedLibrary(const std::filesystem::path& file)
    // A bare name would be looked for in the system's library path.
    : handle_(dlopen(std::filesystem::absolute(file).c_str(), RTLD_NOW | RTLD_LOCAL)) {
  if (handle_ != nullptr) return;
  const char* reason = dlerror();
  throw std::runtime_error(reason != nullptr ? reason : "no reason given");
}

void* LoadedLibrary::Symbol(const char* name) const { return dlsym(handle_, name); }

}  // namespace host
