#include "host/analysis/clipping.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "host/analysis/level.h"
#include "host/analysis/spectrum_lines.h"

namespace host {
namespace {

// What counts as a top: within this share of the largest sample.
constexpr double kTopShare = 0.005;
// A tone of fewer steps of its format has flat tops anyway.
constexpr double kLeastSteps = 16.0;

// The least step between neighbouring samples, 0 when none differ.
double FindStep(std::span<const double> samples) {
  double step = std::numeric_limits<double>::infinity();
  for (std::size_t n = 1; n < samples.size(); ++n) {
    const double difference = std::abs(samples[n] - samples[n - 1]);
    if (difference > 1e-9) step = std::min(step, difference);
  }
  return std::isfinite(step) ? step : 0.0;
}

// The share of undisturbed samples next to the extreme, on one side of zero, when they are rounded to `step`.
double TopShare(std::span<const double> samples, const SynthesizedTone& synthesized, double sign, double step) {
  double extreme = 0.0;
  for (std::size_t n = 0; n < samples.size(); ++n) {
    if (synthesized.undisturbed[n]) extreme = std::max(extreme, sign * samples[n]);
  }
  const double least = extreme - std::max(kTopShare * extreme, 0.5 * step);
  std::size_t count = 0;
  for (std::size_t n = 0; n < samples.size(); ++n) count += synthesized.undisturbed[n] && sign * samples[n] >= least;
  return static_cast<double>(count) / static_cast<double>(std::max<std::size_t>(1, synthesized.undisturbedSamples));
}

// The share of samples in tops, beyond the share that the tone itself has in as coarse a format.
double FlatShare(std::span<const double> samples, const SynthesizedTone& synthesized, double peak) {
  const double step = FindStep(samples);
  if (peak < kLeastSteps * step) return 0.0;
  std::vector<double> rounded = synthesized.samples;
  if (step > 0.0) {
    for (double& sample : rounded) sample = std::round(sample / step) * step;
  }
  double share = 0.0;
  for (const double sign : {1.0, -1.0}) {
    share += TopShare(samples, synthesized, sign, step) - TopShare(rounded, synthesized, sign, step);
  }
  return std::clamp(share, 0.0, 1.0);
}

double PeakOf(const ToneSearch& search) {
  double peak = 1e-300;
  for (std::size_t m = search.timeline.first; m < search.timeline.last; ++m) {
    peak = std::max(peak, std::abs(search.timeline.expected[0][m]));
  }
  return peak;
}

// By least squares, the gain of the values whose expected amplitude lies between two shares of the largest.
double GainBetween(const ToneSearch& search, double peak, double from, double to) {
  double product = 0.0;
  double energy = 1e-300;
  for (std::size_t m = search.timeline.first; m < search.timeline.last; ++m) {
    if (search.timeline.states[m] != 0) continue;
    const std::complex<double> expected = search.timeline.expected[0][m];
    const double share = std::abs(expected) / peak;
    if (share < from || share > to) continue;
    product += (std::conj(expected) * search.baseband.values[m]).real();
    energy += std::norm(expected);
  }
  return std::max(product / energy, 1e-3);
}

}  // namespace

ClippingFindings FindClipping(std::span<const double> samples, const ToneSearch& search,
                              const SynthesizedTone& synthesized, const StretchSpectrum& remainder) {
  ClippingFindings findings;
  const double peak = PeakOf(search);
  findings.flatShare = FlatShare(samples, synthesized, peak);
  findings.peakCompressionDb =
      20.0 * std::log10(GainBetween(search, peak, 0.3, 0.6) / GainBetween(search, peak, 0.85, 1.0));

  const double tonePower = std::max(search.tone.Power(), 1e-300);
  double harmonics = 0.0;
  for (int harmonic = 2; harmonic <= 7; ++harmonic) {
    const double hertz = harmonic * kToneHz * search.speed;
    harmonics += PowerAboveNoise(remainder, hertz, HarmonicHalfWidthHz(harmonic) * search.speed);
  }
  findings.harmonicsDb = PowerDb(harmonics / tonePower);
  double beside = 0.0;
  for (const double offsetHz : {-35.0, -30.0, -25.0, -20.0, 20.0, 25.0, 30.0, 35.0}) {
    beside += PowerAboveNoise(remainder, (kToneHz + offsetHz) * search.speed, 1.5);
  }
  findings.intermodulationDb = PowerDb(beside / tonePower);
  return findings;
}

}  // namespace host
