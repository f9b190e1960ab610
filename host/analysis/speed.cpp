#include "host/analysis/speed.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

#include "host/analysis/tone.h"

namespace host {
namespace {

constexpr double kLeastSpeed = 0.45;
constexpr double kGreatestSpeed = 2.2;
constexpr double kSpeedStep = 1e-4;

}  // namespace

CombFound FindComb(const StretchSpectrum& spectrum) {
  const double highestHz = spectrum.binHz * static_cast<double>(spectrum.power.size() - 1);
  // Amplitudes are looked up over and over.
  const double neededHz = std::min(highestHz, kGreatestSpeed * 1.1 * (kToneHz + PartialOffsetHz(kPartials - 1)));
  std::vector<double> amplitudes(static_cast<std::size_t>(neededHz / spectrum.binHz) + 1);
  for (std::size_t k = 0; k < amplitudes.size(); ++k) amplitudes[k] = std::sqrt(spectrum.power[k]);

  CombFound best;
  for (double speed = kLeastSpeed; speed < kGreatestSpeed; speed *= 1.0 + kSpeedStep) {
    if (speed * (kToneHz + PartialOffsetHz(kPartials - 1)) > neededHz) break;
    std::array<double, kPartials> lines;
    for (std::size_t k = 0; k < kPartials; ++k) {
      const double bin = speed * (kToneHz + PartialOffsetHz(k)) / spectrum.binHz;
      lines[k] = amplitudes[std::min(amplitudes.size() - 1, static_cast<std::size_t>(std::lround(bin)))];
    }
    std::array<double, kPartials> sorted = lines;
    std::nth_element(sorted.begin(), sorted.begin() + kPartials / 2, sorted.end());
    const double most = 2.0 * sorted[kPartials / 2];
    const double amplitude = std::accumulate(lines.begin(), lines.end(), 0.0,
                                             [&](double sum, double line) { return sum + std::min(line, most); });
    if (amplitude > best.amplitude) best = {speed, amplitude};
  }
  return best;
}

}  // namespace host
