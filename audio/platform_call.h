// The checks of the results of platform calls.
#pragma once

#include "audio/outcome_codes.h"
#include "platform/com_memory.h"
#include "platform/com_ptr.h"
#include "platform/core_audio.h"

namespace audio {

// Throws kPlatformError for any status but S_OK: the engine can't use what comes with the other success statuses.
inline void Require(HRESULT status) {
  if (status != S_OK) throw kPlatformError;
}

// The same, and also for a success that left the pointer null, since the caller dereferences it next.
template <class Pointer>
void Require(HRESULT status, const Pointer& handedOut) {
  if (status != S_OK || !handedOut) throw kPlatformError;
}

// The object that get(interfaceId, place) stores in `place`, a `void**` as COM has it. Throws kPlatformError if `get`
// returns another status than S_OK or stores null.
template <class Interface, class Get>
ComPtr<Interface> RequireInterface(Get get) {
  ComPtr<Interface> object;
  Require(get(core_audio::InterfaceId<Interface>(), object.ReceiveAny()), object);
  return object;
}

}  // namespace audio
