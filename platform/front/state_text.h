#pragma once

#include <string>

#include "platform/backend.h"
#include "platform/front/journal.h"

namespace platform {

// The platform as AudioPlatformState tells of it, UTF-8 (docs/virtual-machine.md, docs/sound-server.md). The
// backend's lock is held. Throws std::bad_alloc.
std::string StateText(Backend& backend, const Journal& journal);

}  // namespace platform
