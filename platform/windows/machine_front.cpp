#include "platform/windows/machine_front.h"

#include <cstring>
#include <memory>
#include <stdexcept>
#include <string_view>

#include "platform/backends.h"
#include "platform/core_audio.h"
#include "platform/front/front.h"
#include "platform/windows/observer_class.h"

namespace virtual_audio {
namespace {

std::unique_ptr<platform::Front> g_machine;

// What COM asks for a new enumerator.
class EnumeratorFactory final : public IClassFactory {
 public:
  explicit EnumeratorFactory(const CLSID& classId) : classId_(classId) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    *object = nullptr;
    if (!(iid == IID_IUnknown) && !(iid == IID_IClassFactory)) return E_NOINTERFACE;
    *object = static_cast<IClassFactory*>(this);
    return S_OK;
  }
  // One object for the process: there is nothing to count.
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
    *object = nullptr;
    if (g_machine == nullptr) return CO_E_SERVER_STOPPING;
    return g_machine->CreateInstance(classId_, outer, iid, object);
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

  // Gives COM the class, if it doesn't have it.
  HRESULT Register() {
    if (registration_ != 0) return S_OK;
    return CoRegisterClassObject(classId_, this, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &registration_);
  }
  void Revoke() {
    if (registration_ != 0) CoRevokeClassObject(registration_);
    registration_ = 0;
  }

 private:
  const CLSID& classId_;
  DWORD registration_ = 0;
};

EnumeratorFactory g_factory(core_audio::EnumeratorClass());
EnumeratorFactory g_observerFactory(kObserverClass);

// The system's own, read before any import is redirected: the program that holds the machine may have its own
// redirected.
const auto g_systemSleep = &::Sleep;
const auto g_systemPropVariantClear = &::PropVariantClear;

void WINAPI MachineSleep(DWORD milliseconds) {
  if (g_machine == nullptr) return g_systemSleep(milliseconds);
  g_machine->Sleep(milliseconds);
}

HRESULT WINAPI MachinePropVariantClear(PROPVARIANT* value) {
  return g_machine == nullptr ? g_systemPropVariantClear(value) : g_machine->ClearProperty(value);
}

// Where the published layout of a loaded image has something: an address relative to its base.
template <class Structure>
Structure* At(HMODULE module, DWORD offset) {
  return reinterpret_cast<Structure*>(reinterpret_cast<BYTE*>(module) + offset);
}

void Redirect(IMAGE_THUNK_DATA* import, void* function) {
  DWORD protection = 0;
  if (!VirtualProtect(&import->u1.Function, sizeof(import->u1.Function), PAGE_READWRITE, &protection)) return;
  import->u1.Function = reinterpret_cast<ULONGLONG>(function);
  VirtualProtect(&import->u1.Function, sizeof(import->u1.Function), protection, &protection);
}

void* ReplacementFor(std::string_view name) {
  if (name == "Sleep") return reinterpret_cast<void*>(&MachineSleep);
  if (name == "PropVariantClear") return reinterpret_cast<void*>(&MachinePropVariantClear);
  return nullptr;
}

}  // namespace

void PutMachineInFront(const std::string& description) {
  g_machine = std::make_unique<platform::Front>(platform::OpenBackend(description));
  g_hasObserverClass = true;
  if (FAILED(g_factory.Register()) || FAILED(g_observerFactory.Register())) {
    throw platform::PlatformError("COM doesn't take the machine's class objects.");
  }
}

void TakeMachineAway() {
  g_factory.Revoke();
  g_observerFactory.Revoke();
  g_hasObserverClass = false;
  g_machine.reset();
}

void PutMachineInFrontOf(HMODULE module) {
  if (g_machine == nullptr) return;
  const auto* const header =
      At<IMAGE_NT_HEADERS>(module, static_cast<DWORD>(At<IMAGE_DOS_HEADER>(module, 0)->e_lfanew));
  const IMAGE_DATA_DIRECTORY& imports = header->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  if (imports.Size == 0) return;
  for (const auto* library = At<IMAGE_IMPORT_DESCRIPTOR>(module, imports.VirtualAddress); library->Name != 0;
       ++library) {
    const auto* name = At<IMAGE_THUNK_DATA>(module, library->OriginalFirstThunk);
    auto* import = At<IMAGE_THUNK_DATA>(module, library->FirstThunk);
    for (; name->u1.AddressOfData != 0; ++name, ++import) {
      if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
      const auto* const byName = At<IMAGE_IMPORT_BY_NAME>(module, static_cast<DWORD>(name->u1.AddressOfData));
      void* const replacement = ReplacementFor(reinterpret_cast<const char*>(byName->Name));
      if (replacement != nullptr) Redirect(import, replacement);
    }
  }
}

std::string MachineState() { return g_machine == nullptr ? std::string() : g_machine->StateText(); }

}  // namespace virtual_audio
