#pragma once

#include "host/analysis/spectrum_of_stretch.h"

namespace host {

// The mean noise of a bin around a frequency: from the median of the bins within `reachHz`, of which lines are few.
double NoiseAround(const StretchSpectrum& spectrum, double hertz, double reachHz);

// The power within `halfWidthHz` of a frequency, less that of the noise around it; 0 where the spectrum ends before, and
// where what stands out may be the noise's own.
double PowerAboveNoise(const StretchSpectrum& spectrum, double hertz, double halfWidthHz);

// How far the products of a distorted tone lie from a harmonic of its carrier.
double HarmonicHalfWidthHz(int harmonic);

}  // namespace host
