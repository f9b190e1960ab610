#pragma once

#include <memory>

#include "platform/core_audio.h"
#include "platform/pulse/endpoint.h"

namespace pulse_audio {

// Hands out a new device object for the endpoint. Throws std::bad_alloc.
HRESULT NewDevice(const std::shared_ptr<Connection>& connection, const Endpoint& endpoint, IMMDevice** device);

}  // namespace pulse_audio
