#pragma once

#include <vector>

#include "host/analysis/tone_search.h"

namespace host {

// The tone that was found, sample by sample, next to what was recorded.
struct SynthesizedTone {
  std::vector<double> samples;    // 0 where the tone isn't heard
  std::vector<bool> undisturbed;  // the tone is heard, and nothing begins or ends within some milliseconds
  std::size_t undisturbedSamples = 0;
};

// For `count` samples; the search must have heard the tone.
SynthesizedTone SynthesizeTone(const ToneSearch& search, std::size_t count);

}  // namespace host
