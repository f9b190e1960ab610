#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/backend.h"

namespace pulse_audio {

// The sound server that libpulse calls by this text; without one, the server that libpulse finds by itself. Throws
// platform::PlatformError when it doesn't answer, and std::bad_alloc.
//
// A level is the server's volume of the channel as a share of PA_VOLUME_NORM: the position of a mixer's slider, on the
// server's cubic taper, where 1.0 is full and mixers may go above. A float holds every volume up to 256 times that
// exactly, so a level that was read sets the very same volume again; for that, levels above 1.0 can be set too.
std::unique_ptr<platform::Backend> OpenSoundServer(const std::optional<std::string>& server);

}  // namespace pulse_audio
