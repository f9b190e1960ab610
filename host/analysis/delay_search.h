#pragma once

#include <cstddef>

#include "host/analysis/tone_fit.h"

namespace host {

// How well the tone explains a stretch of a baseband when it comes later or, with a negative delay, earlier.
struct DelayedFit {
  double delaySeconds = 0.0;
  double explained = 0.0;  // energy that it explains with a gain of its own, in the units of the baseband
};

// The best delay within bounds, usually -0.1 to 0.1 s, for the values from `first` to before `last`, to some microseconds: the peak of the
// cross-correlation with the tone. A tone that is half a wave late is told from an inverted one by its envelope alone.
DelayedFit FindDelay(const Baseband& baseband, const FittedTone& tone, std::size_t first, std::size_t last,
                     double least = -0.5 * kEnvelopeSeconds, double most = 0.5 * kEnvelopeSeconds);

}  // namespace host
