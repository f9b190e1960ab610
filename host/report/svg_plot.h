#pragma once

#include <string>

#include "host/listening/sound_summary.h"

namespace host {

// An SVG document (W3C, "Scalable Vector Graphics 1.1") that stands by itself: the waveform above, the spectrum below,
// and the figures. `title` is any UTF-8 text, best a short one. `toneHz` is where the tone's band is marked; 0 for no
// tone.
std::string SvgPlot(const SoundSummary& sound, const std::string& title, double toneHz);

}  // namespace host
