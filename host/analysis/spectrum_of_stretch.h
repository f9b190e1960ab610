#pragma once

#include <span>
#include <vector>

namespace host {

// The power of a stretch of sound by frequency, as one periodogram: bin k stands for k * binHz, up to half the rate.
// The bins add up to the mean square of the samples as weighted by the window.
struct StretchSpectrum {
  double binHz = 0.0;
  std::vector<double> power;
};

enum class StretchWindow { kRectangular, kHann };

// Of samples that are at least 2; zeros fill them up to the next power of two.
StretchSpectrum TransformStretch(std::span<const double> samples, double rate, StretchWindow window);

}  // namespace host
