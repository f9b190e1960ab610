#include "host/analysis/remainder.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <vector>

#include "host/analysis/level.h"
#include "host/analysis/spectrum_lines.h"
#include "host/analysis/tone.h"

namespace host {
namespace {

constexpr double kLowestHz = 20.0;
constexpr double kReachHz = 40.0;
constexpr double kLineHz = 2.5;  // half the width of a line in a spectrum of about a second
// How far the largest bin stands above the noise around it to be a line: noise alone does so in one of 10^13 bins.
constexpr double kProminence = 30.0;
constexpr double kSkirtHz = 15.0;  // where a line's skirts are 75 dB down
constexpr int kHumHarmonics = 8;
// A coarse format bends the tone, which has lines where the mains have theirs: hum is more of the whole.
constexpr double kLeastHum = 0.01;

// The mains' lines up to the eighth, 0 when none of the first three stands out.
double HumPower(const StretchSpectrum& spectrum, double mainsHz) {
  double power = 0.0;
  for (int harmonic = 1; harmonic <= kHumHarmonics; ++harmonic) {
    const double line = PowerAboveNoise(spectrum, harmonic * mainsHz, kLineHz);
    const double noise = NoiseAround(spectrum, harmonic * mainsHz, kReachHz);
    const bool standsOut = line > kProminence * noise;
    if (harmonic <= 3 || power > 0.0) power += standsOut ? line : 0.0;
  }
  return power;
}

void ClearAround(StretchSpectrum& spectrum, double hertz, double halfWidthHz) {
  const double bins = static_cast<double>(spectrum.power.size());
  const auto first = static_cast<std::ptrdiff_t>(std::clamp((hertz - halfWidthHz) / spectrum.binHz, 0.0, bins));
  const auto last = static_cast<std::ptrdiff_t>(std::clamp((hertz + halfWidthHz) / spectrum.binHz + 1.0, 0.0, bins));
  std::fill(spectrum.power.begin() + first, spectrum.power.begin() + last, 0.0);
}

// Where the top of a parabola through the logarithms of three bins lies.
double PeakHz(const StretchSpectrum& spectrum, std::size_t bin) {
  double offset = 0.0;
  if (bin > 0 && bin + 1 < spectrum.power.size()) {
    const double left = std::log(spectrum.power[bin - 1] + 1e-300);
    const double middle = std::log(spectrum.power[bin] + 1e-300);
    const double right = std::log(spectrum.power[bin + 1] + 1e-300);
    const double curvature = left - 2.0 * middle + right;
    if (curvature < 0.0) offset = std::clamp(0.5 * (left - right) / curvature, -0.5, 0.5);
  }
  return (static_cast<double>(bin) + offset) * spectrum.binHz;
}

}  // namespace

RemainderFindings DescribeRemainder(const StretchSpectrum& spectrum, double toneSpeed) {
  RemainderFindings findings;
  if (spectrum.power.empty()) return findings;
  const double total = std::accumulate(spectrum.power.begin(), spectrum.power.end(), 0.0);
  findings.totalDb = FullScaleDb(total);
  double lines = 0.0;

  StretchSpectrum rest = spectrum;
  const double hum50 = HumPower(spectrum, 50.0);
  const double hum60 = HumPower(spectrum, 60.0);
  if (std::max(hum50, hum60) > kLeastHum * total) {
    findings.humHz = hum50 >= hum60 ? 50.0 : 60.0;
    findings.humDb = FullScaleDb(std::max(hum50, hum60));
    lines += std::max(hum50, hum60);
    for (int harmonic = 1; harmonic <= kHumHarmonics; ++harmonic)
      ClearAround(rest, harmonic * findings.humHz, kSkirtHz);
  }
  ClearAround(rest, 0.0, kLowestHz);
  if (toneSpeed > 0.0) {
    ClearAround(rest, kToneHz * toneSpeed, 60.0);
    for (int harmonic = 2; harmonic <= 7; ++harmonic) {
      ClearAround(rest, harmonic * kToneHz * toneSpeed, 2.0 * HarmonicHalfWidthHz(harmonic));
    }
  }
  const auto highest = std::max_element(rest.power.begin(), rest.power.end());
  const auto bin = static_cast<std::size_t>(highest - rest.power.begin());
  const double hertz = PeakHz(spectrum, bin);
  if (*highest > kProminence * NoiseAround(spectrum, hertz, kReachHz) && *highest > 0.0) {
    const double power = PowerAboveNoise(spectrum, hertz, kLineHz);
    findings.otherToneHz = hertz;
    findings.otherToneDb = FullScaleDb(power);
    lines += power;
  }
  findings.noiseDb = FullScaleDb(std::max(0.0, total - lines));
  return findings;
}

}  // namespace host
