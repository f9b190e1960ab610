#pragma once

#include <memory>
#include <string>
#include <unordered_set>

#include "platform/backend.h"
#include "platform/core_audio.h"
#include "platform/front/journal.h"

namespace platform {

// What stands behind the platform's functions on a thread. One exists per initialisation; the objects that it hands out
// may outlive it. The operations throw nothing.
class Front {
 public:
  explicit Front(std::unique_ptr<Backend> backend);
  Front(const Front&) = delete;
  Front& operator=(const Front&) = delete;
  ~Front();

  // CoCreateInstance, PropVariantClear and Sleep, as core_audio.h has them. `object` isn't null.
  HRESULT CreateInstance(REFCLSID classId, IUnknown* outer, REFIID iid, void** object);
  HRESULT ClearProperty(PROPVARIANT* value);
  void Sleep(DWORD milliseconds);

  // The text of AudioPlatformState. Throws std::bad_alloc.
  std::string StateText() const;

 private:
  const std::shared_ptr<Backend> backend_;
  const std::shared_ptr<Journal> journal_;           // of all but the observers
  const std::shared_ptr<Journal> observersJournal_;  // without a trace
  std::unordered_set<void*> unclearedMemory_;        // of property values whose clearing was told to fail
};

}  // namespace platform
