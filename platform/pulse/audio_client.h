#pragma once

#include <memory>

#include "platform/core_audio.h"
#include "platform/pulse/endpoint.h"

namespace pulse_audio {

// Hands out a new audio client for the endpoint. Its stream ends with its last reference; a service of the stream is a
// reference to it. Throws std::bad_alloc.
HRESULT NewAudioClient(const std::shared_ptr<Connection>& connection, const EndpointName& endpoint,
                       IAudioClient** client);

}  // namespace pulse_audio
