#pragma once

#include <string>
#include <vector>

#include "host/restoring/restoration.h"

namespace host {

// Puts settings back on a platform (as --platform takes it, but for "auto"), on a connection of its own: the audio system
// may have gone and come back. One that isn't there is tried again for two seconds. Returns within 20 seconds, also when the
// audio system hangs.
Restoration PutBackInTime(const std::string& platform, const std::vector<Endpoint>& saved);

}  // namespace host
