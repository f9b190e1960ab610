#pragma once

#include <span>

#include "host/analysis/findings.h"
#include "host/analysis/spectrum_of_stretch.h"
#include "host/analysis/tone_synthesis.h"

namespace host {

// How a path bends the tone: all but the THD+N, which needs the whole remainder. `samples` are without an offset,
// `remainder` is the spectrum of what is left of them without the tone.
ClippingFindings FindClipping(std::span<const double> samples, const ToneSearch& search,
                              const SynthesizedTone& synthesized, const StretchSpectrum& remainder);

}  // namespace host
