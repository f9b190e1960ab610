#include "platform/virtual/virtual_platform.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <unordered_set>

#include "platform/com_ptr.h"
#include "platform/property.h"
#include "platform/virtual/built_in_machine.h"
#include "platform/virtual/device_enumerator.h"
#include "platform/virtual/machine.h"

namespace virtual_audio {

namespace {

void* MemoryOf(const PROPVARIANT* value) {
  if (value == nullptr) return nullptr;
  return value->vt == VT_LPWSTR ? static_cast<void*>(value->pwszVal)
         : value->vt == VT_BLOB ? static_cast<void*>(value->blob.pBlobData)
                                : nullptr;
}

std::string ContentsOf(const std::string& file) {
  errno = 0;
  // A path made of UTF-8 on every system.
  std::ifstream stream(std::filesystem::path(std::u8string(file.begin(), file.end())), std::ios::binary);
  std::string contents;
  char chunk[4096];
  while (stream.read(chunk, sizeof chunk), stream.gcount() > 0) {
    contents.append(chunk, static_cast<std::size_t>(stream.gcount()));
  }
  if (!stream.eof()) {
    throw platform::PlatformError('"' + file + "\" can't be read: " + std::generic_category().message(errno));
  }
  return contents;
}

class VirtualPlatform final : public platform::Platform {
 public:
  explicit VirtualPlatform(const MachineDescription& description) : machine_(std::make_shared<Machine>(description)) {}
  ~VirtualPlatform() override {
    for (void* memory : abandoned_) CoTaskMemFree(memory);
  }

  HRESULT CreateInstance(REFCLSID classId, IUnknown* outer, REFIID iid, void** object) override {
    return machine_->Call("CoCreateInstance", nullptr, {{"interface", iid}}, [&]() -> HRESULT {
      if (outer != nullptr) return CLASS_E_NOAGGREGATION;
      if (!(classId == core_audio::EnumeratorClass())) return REGDB_E_CLASSNOTREG;
      ComPtr<IMMDeviceEnumerator> enumerator;
      NewDeviceEnumerator(machine_, enumerator.Receive());
      return enumerator->QueryInterface(iid, object);
    });
  }

  HRESULT ClearProperty(PROPVARIANT* value) override {
    // Clearing that is told to fail leaves memory that its owner has no other way to release. It is released with the
    // platform, so that a failing call isn't taken for the caller's leak.
    void* const memory = MemoryOf(value);
    bool isCarriedOut = false;
    const HRESULT status = machine_->Call("PropVariantClear", nullptr, {}, [&] {
      isCarriedOut = true;
      abandoned_.erase(memory);
      return platform::ReleaseProperty(value);
    });
    if (!isCarriedOut && memory != nullptr) Abandon(memory);
    return status;
  }

  void Wait(DWORD milliseconds) override { machine_->Sleep(milliseconds); }

  std::string State() const override { return machine_->StateText(); }

 private:
  void Abandon(void* memory) {
    try {
      abandoned_.insert(memory);
    } catch (...) {
      // Without room to remember it, it stays with the caller.
    }
  }

  std::shared_ptr<Machine> machine_;
  std::unordered_set<void*> abandoned_;
};

}  // namespace

std::unique_ptr<platform::Platform> BuiltInPlatform() {
  return std::make_unique<VirtualPlatform>(ParseDescription(kBuiltInMachine));
}

std::unique_ptr<platform::Platform> PlatformFromFile(const std::string& file) {
  return std::make_unique<VirtualPlatform>(ParseDescription(ContentsOf(file)));
}

}  // namespace virtual_audio
