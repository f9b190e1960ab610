#pragma once

#include <string>

#include "host/base/text_output.h"
#include "host/listening/sound_summary.h"

namespace host {

// About a dozen lines with line feeds, none wider than the style's columns when these are 40 or more: the figures, the
// waveform, the spectrum by the logarithm of the frequency, below it, unless `toneHz` is 0, the place of the tone, and the
// spectrum's scale. Silence is called that.
std::string TerminalPlot(const SoundSummary& sound, const Style& style, double toneHz = 0.0);

}  // namespace host
