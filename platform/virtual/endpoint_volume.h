#pragma once

#include <memory>

#include "platform/core_audio.h"
#include "platform/virtual/machine.h"

namespace virtual_audio {

// Hands out a new volume object for the endpoint. Throws std::bad_alloc.
HRESULT NewEndpointVolume(const std::shared_ptr<Machine>& machine, Endpoint& endpoint, IAudioEndpointVolume** volume);

}  // namespace virtual_audio
