#pragma once

#include <memory>

#include "platform/core_audio.h"
#include "platform/pulse/connection.h"

namespace pulse_audio {

// Hands out a new enumerator of the server's endpoints. Throws std::bad_alloc.
HRESULT NewDeviceEnumerator(const std::shared_ptr<Connection>& connection, IMMDeviceEnumerator** enumerator);

}  // namespace pulse_audio
