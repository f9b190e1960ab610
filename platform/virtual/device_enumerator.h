#pragma once

#include <memory>

#include "platform/core_audio.h"
#include "platform/virtual/machine.h"

namespace virtual_audio {

// Hands out a new enumerator of the machine's endpoints, in the order of the description. Throws std::bad_alloc.
HRESULT NewDeviceEnumerator(const std::shared_ptr<Machine>& machine, IMMDeviceEnumerator** enumerator);

}  // namespace virtual_audio
