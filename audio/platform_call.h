// What every platform call of the engine shares: the test of its result.
#pragma once

#include "audio/outcome_codes.h"
#include "platform/com_memory.h"
#include "platform/com_ptr.h"
#include "platform/core_audio.h"

namespace audio {

// Throws kPlatformError for any status but S_OK: the engine knows nothing to do with the other success statuses.
inline void Require(HRESULT status) {
  if (status != S_OK) throw kPlatformError;
}

// Also if the call reported success but left the pointer, of whatever kind, null: it would be read through next.
template <class Pointer>
void Require(HRESULT status, const Pointer& handedOut) {
  if (status != S_OK || !handedOut) throw kPlatformError;
}

// An object behind a COM operation's `void**`, with the interface's own identifier. `get` is called as
// get(interfaceId, place) and gives the status.
template <class Interface, class Get>
ComPtr<Interface> RequireInterface(Get get) {
  ComPtr<Interface> object;
  Require(get(core_audio::InterfaceId<Interface>(), object.ReceiveAny()), object);
  return object;
}

}  // namespace audio
