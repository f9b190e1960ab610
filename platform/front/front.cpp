#include "platform/front/front.h"

#include <mutex>
#include <optional>
#include <utility>

#include "platform/com_ptr.h"
#include "platform/front/caller_memory.h"
#include "platform/front/context.h"
#include "platform/front/objects.h"
#include "platform/front/state_text.h"

namespace platform {

namespace {

std::shared_ptr<Journal> JournalFor(const Backend& backend, bool ofObservers) {
  std::optional<std::vector<Fault>> described = backend.DescribedFaults();
  std::vector<Fault> faults = described.value_or(std::vector<Fault>());
  std::erase_if(faults, [&](const Fault& fault) { return fault.observer != ofObservers; });
  return std::make_shared<Journal>(std::move(faults), described.has_value() && !ofObservers);
}

}  // namespace

Front::Front(std::unique_ptr<Backend> backend)
    : backend_(std::move(backend)),
      journal_(JournalFor(*backend_, false)),
      observersJournal_(JournalFor(*backend_, true)) {}

Front::~Front() {
  for (void* memory : unclearedMemory_) CoTaskMemFree(memory);
}

HRESULT Front::CreateInstance(REFCLSID classId, IUnknown* outer, REFIID iid, void** object) {
  const bool isObserver = classId == core_audio::ObserverEnumeratorClass();
  const Context context{backend_, isObserver ? observersJournal_ : journal_, nullptr};
  return context.Call("CoCreateInstance", {{"interface", iid}}, [&]() -> HRESULT {
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    if (!isObserver && !(classId == core_audio::EnumeratorClass())) return REGDB_E_CLASSNOTREG;
    ComPtr<IMMDeviceEnumerator> enumerator;
    NewEnumerator(context, enumerator.Receive());
    return enumerator->QueryInterface(iid, object);
  });
}

HRESULT Front::ClearProperty(PROPVARIANT* value) {
  // Clearing that is told to fail leaves memory that its owner has no other way to release. It is released with the
  // platform, so that a failing call isn't taken for the caller's leak.
  void* const memory = MemoryOf(value);
  bool isCarriedOut = false;
  const HRESULT status = Context{backend_, journal_, nullptr}.Call("PropVariantClear", {}, [&] {
    isCarriedOut = true;
    unclearedMemory_.erase(memory);
    return ReleaseProperty(value);
  });
  if (isCarriedOut || memory == nullptr) return status;
  try {
    unclearedMemory_.insert(memory);
  } catch (...) {
    // Without room to remember it, it stays with the caller.
  }
  return status;
}

void Front::Sleep(DWORD milliseconds) {
  const Context context{backend_, journal_, nullptr};
  const HRESULT status = context.Call("Sleep", {{"milliseconds", milliseconds}}, [] { return S_OK; });
  if (status == S_OK) backend_->Sleep(milliseconds);
}

std::string Front::StateText() const {
  const std::lock_guard turn(*backend_);
  return platform::StateText(*backend_, *journal_);
}

}  // namespace platform
