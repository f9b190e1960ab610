#pragma once

#include <string>

#include "host/listening/captured_sound.h"

namespace host {

// The bytes of a WAV file with every frame as it was captured: a RIFF file (IBM and Microsoft, "Multimedia Programming
// Interface and Data Specifications 1.0", 1991), for more than two channels or samples that don't fill their container
// with a WAVE_FORMAT_EXTENSIBLE header (Microsoft, "Multiple Channel Audio Data and WAVE Files", 2001). The frames must
// have been kept. A listener's buffer holds ten seconds, so the sizes never come near the 4 GiB that the format has
// room for.
std::string WavFile(const CapturedSound& sound);

}  // namespace host
