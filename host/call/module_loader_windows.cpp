#include <windows.h>

#include <stdexcept>

#include "host/base/system.h"
#include "host/call/module_loader.h"
#include "platform/windows/machine_front.h"

namespace host {

LoadedLibrary::LoadedLibrary(const std::filesystem::path& file)
    : handle_(LoadLibraryW(std::filesystem::absolute(file).c_str())) {
  if (handle_ == nullptr) throw std::runtime_error(LastError().message());
  virtual_audio::PutMachineInFrontOf(static_cast<HMODULE>(handle_));
}

void* LoadedLibrary::Symbol(const char* name) const {
  return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(handle_), name));
}

}  // namespace host
