#pragma once

#include <memory>

#include "platform/core_audio.h"
#include "platform/virtual/machine.h"

namespace virtual_audio {

// Hands out a new device object for the endpoint. Throws std::bad_alloc.
HRESULT NewDevice(const std::shared_ptr<Machine>& machine, Endpoint& endpoint, IMMDevice** device);

}  // namespace virtual_audio
