#pragma once

#include "platform/core_audio.h"

namespace host {

// The status of an operation that hands something out. E_POINTER for one that succeeded and handed out nothing, as a faulty
// driver's does: callers use what they are given.
template <class Pointer>
HRESULT StatusWith(HRESULT status, const Pointer& handedOut) {
  return SUCCEEDED(status) && !handedOut ? E_POINTER : status;
}

}  // namespace host
