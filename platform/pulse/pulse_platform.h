#pragma once

#include <memory>
#include <string>

#include "platform/platform.h"

namespace pulse_audio {

// The sound server that libpulse calls by this text; empty, the one that it finds by itself. Throws
// platform::PlatformError when it doesn't answer, and std::bad_alloc.
std::unique_ptr<platform::Platform> PlatformOn(const std::string& server);

}  // namespace pulse_audio
