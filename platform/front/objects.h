#pragma once

#include "platform/core_audio.h"
#include "platform/front/context.h"

namespace platform {

// Hand out a new object and give S_OK. All but the enumerator are of the context's endpoint. They throw std::bad_alloc.
HRESULT NewEnumerator(const Context& context, IMMDeviceEnumerator** enumerator);
HRESULT NewDevice(const Context& context, IMMDevice** device);
// Its stream ends with the client's last reference; a service of the stream is a reference to the client.
HRESULT NewClient(const Context& context, IAudioClient** client);
HRESULT NewVolume(const Context& context, IAudioEndpointVolume** volume);

}  // namespace platform
