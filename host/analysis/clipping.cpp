#include "host/analysis/clipping.h"

#include <algorithm>
#include <cmath>

#include "host/analysis/level.h"
#include "host/analysis/spectrum_lines.h"

namespace host {
namespace {

// What counts as a top: within this share of the largest sample.
constexpr double kTopShare = 0.005;
// A tone of fewer steps of its format has flat tops anyway. With up to kFewSteps it depends on where its peak lies between
// two steps how flat they are, and the peak isn't known that well: these gains around the one that was fitted are tried.
constexpr double kLeastSteps = 6.0;
constexpr double kFewSteps = 40.0;
constexpr double kGainsTried[] = {1.0, 0.92, 0.94, 0.96, 0.98, 1.02, 1.04, 1.06, 1.08};
// On one side of zero; below this the tops may be the tone's own.
constexpr double kLeastFlatShare = 0.002;
constexpr double kMergeSeconds = 0.03;
constexpr std::size_t kMostStretches = 100;

// The undisturbed samples next to the extreme, on one side of zero, when they are rounded to `step`.
std::vector<std::size_t> FindTops(std::span<const double> samples, const SynthesizedTone& synthesized, double sign,
                                  double step) {
  double extreme = 0.0;
  for (std::size_t n = 0; n < samples.size(); ++n) {
    if (synthesized.undisturbed[n]) extreme = std::max(extreme, sign * samples[n]);
  }
  const double least = extreme - std::max(kTopShare * extreme, 0.5 * step);
  std::vector<std::size_t> tops;
  for (std::size_t n = 0; n < samples.size(); ++n) {
    if (synthesized.undisturbed[n] && sign * samples[n] >= least) tops.push_back(n);
  }
  return tops;
}

// How many the tone itself has in as coarse a format.
std::size_t CountOwnTops(const SynthesizedTone& synthesized, double sign, double step, double peak) {
  std::size_t most = 0;
  for (const double gain : kGainsTried) {
    std::vector<double> rounded = synthesized.samples;
    if (step > 0.0) {
      for (double& sample : rounded) sample = std::round(gain * sample / step) * step;
    }
    most = std::max(most, FindTops(rounded, synthesized, sign, step).size());
    if (peak >= kFewSteps * step) break;
  }
  return most;
}

// From a list of samples in order of time.
std::vector<ClippedStretch> MergeTops(std::span<const std::size_t> tops, double rate) {
  std::vector<ClippedStretch> stretches;
  for (const std::size_t top : tops) {
    const double seconds = static_cast<double>(top) / rate;
    const bool isNear =
        !stretches.empty() && seconds - stretches.back().beginSeconds - stretches.back().lengthSeconds < kMergeSeconds;
    if (!isNear && stretches.size() == kMostStretches) break;
    if (!isNear) stretches.push_back({seconds, 0.0});
    stretches.back().lengthSeconds = seconds + 1.0 / rate - stretches.back().beginSeconds;
  }
  return stretches;
}

// The samples in tops, beyond those that the tone itself has.
void FindFlatTops(std::span<const double> samples, double rate, double step, const SynthesizedTone& synthesized,
                  double peak, ClippingFindings& findings) {
  if (peak < kLeastSteps * step) return;
  std::vector<std::size_t> clipped;
  for (const double sign : {1.0, -1.0}) {
    const std::vector<std::size_t> tops = FindTops(samples, synthesized, sign, step);
    const std::size_t own = CountOwnTops(synthesized, sign, step, peak);
    const double share = (static_cast<double>(tops.size()) - static_cast<double>(own)) /
                         static_cast<double>(std::max<std::size_t>(1, synthesized.undisturbedSamples));
    findings.flatShare += share;
    if (share > kLeastFlatShare) clipped.insert(clipped.end(), tops.begin(), tops.end());
  }
  findings.flatShare = std::clamp(findings.flatShare, 0.0, 1.0);
  std::sort(clipped.begin(), clipped.end());
  findings.clippedStretches = MergeTops(clipped, rate);
}

double PeakOf(const ToneSearch& search) {
  double peak = 1e-300;
  for (std::size_t m = search.timeline.first; m < search.timeline.last; ++m) {
    peak = std::max(peak, std::abs(search.timeline.expected[0][m]));
  }
  return peak;
}

// By least squares, the gain of the values whose expected amplitude lies between two shares of the largest; 1 where there
// are none.
double GainBetween(const ToneSearch& search, double peak, double from, double to) {
  double product = 0.0;
  double energy = 0.0;
  for (std::size_t m = search.timeline.first; m < search.timeline.last; ++m) {
    if (search.timeline.states[m] != 0) continue;
    const std::complex<double> expected = search.timeline.expected[0][m];
    const double share = std::abs(expected) / peak;
    if (share < from || share > to) continue;
    product += (std::conj(expected) * search.baseband.values[m]).real();
    energy += std::norm(expected);
  }
  return energy > 0.0 ? std::max(product / energy, 1e-3) : 1.0;
}

}  // namespace

ClippingFindings FindClipping(std::span<const double> samples, const ToneSearch& search,
                              const SynthesizedTone& synthesized, const StretchSpectrum& remainder) {
  ClippingFindings findings;
  const double peak = PeakOf(search);
  FindFlatTops(samples, search.baseband.rate * search.speed, search.step, synthesized, peak, findings);
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
