#pragma once

#include <string>
#include <vector>

#include "host/listening/sound_summary.h"

namespace host {

// What was heard, in figures for a person: "peak -6.8 dBFS" and so on.
std::vector<std::string> SoundFigures(const SoundSummary& sound);

// Whether there is nothing in it that a person would hear, and what to call that.
bool IsSilent(const SoundSummary& sound);
std::string SilenceText(const SoundSummary& sound);

// "50 Hz", "1.2 kHz".
std::string FrequencyText(double hertz);

// The least of 1.0, 0.5, 0.2, 0.1, 0.05 and so on that the waveform fits in: quiet sounds are drawn larger. 1.0 for
// silence, whose noise would look like a sound.
double WaveformScale(double peak);

// Where a frequency lies between the ends of the spectrum, 0.0 to 1.0.
double SpectrumPosition(const SoundSummary& sound, double hertz);

}  // namespace host
