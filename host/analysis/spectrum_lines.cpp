#include "host/analysis/spectrum_lines.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace host {
namespace {

std::size_t BinAt(const StretchSpectrum& spectrum, double hertz) {
  const double bin = std::clamp(hertz / spectrum.binHz, 0.0, static_cast<double>(spectrum.power.size() - 1));
  return static_cast<std::size_t>(std::lround(bin));
}

}  // namespace

double NoiseAround(const StretchSpectrum& spectrum, double hertz, double reachHz) {
  const std::size_t first = BinAt(spectrum, hertz - reachHz);
  const std::size_t last = BinAt(spectrum, hertz + reachHz) + 1;
  std::vector<double> bins(spectrum.power.begin() + static_cast<std::ptrdiff_t>(first),
                           spectrum.power.begin() + static_cast<std::ptrdiff_t>(last));
  const auto middle = bins.begin() + static_cast<std::ptrdiff_t>(bins.size() / 2);
  std::nth_element(bins.begin(), middle, bins.end());
  // The power of noise in a bin is distributed exponentially, with its median at ln 2 of its mean.
  return *middle / std::numbers::ln2;
}

double PowerAboveNoise(const StretchSpectrum& spectrum, double hertz, double halfWidthHz) {
  if (hertz + halfWidthHz > spectrum.binHz * static_cast<double>(spectrum.power.size() - 1)) return 0.0;
  const std::size_t first = BinAt(spectrum, hertz - halfWidthHz);
  const std::size_t last = BinAt(spectrum, hertz + halfWidthHz) + 1;
  double power = 0.0;
  for (std::size_t k = first; k < last; ++k) power += spectrum.power[k];
  // Neighbouring bins go together under a window, so that a sum of n of them varies by more than sqrt(n).
  const auto bins = static_cast<double>(last - first);
  const double noise = NoiseAround(spectrum, hertz, 4.0 * halfWidthHz + 20.0);
  return std::max(0.0, power - noise * (bins + 5.0 * std::sqrt(bins)));
}

double HarmonicHalfWidthHz(int harmonic) { return 15.0 * harmonic + 5.0; }

}  // namespace host
