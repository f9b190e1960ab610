#pragma once

#include <memory>

#include "platform/core_audio.h"
#include "platform/pulse/endpoint.h"

namespace pulse_audio {

// Hands out a new volume object for the endpoint. Throws std::bad_alloc.
//
// A level is the server's volume of the channel as a share of PA_VOLUME_NORM: the position of a mixer's slider, on the
// server's cubic taper, where 1.0 is full and mixers may go above. A float holds every volume up to 256 times that
// exactly, so a level that was read sets the very same volume again; for that, levels above 1.0 can be set too.
HRESULT NewEndpointVolume(const std::shared_ptr<Connection>& connection, const EndpointName& endpoint,
                          IAudioEndpointVolume** volume);

}  // namespace pulse_audio
