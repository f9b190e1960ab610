#include "host/analysis/tone_search.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "host/analysis/speed.h"

namespace host {
namespace {

using Complex = std::complex<double>;

constexpr double kLeastShare = 0.75;
// Near the generated pattern; or, as many close echoes make it, further from it but with power in most partials. One to
// three sines are neither.
constexpr double kLeastMatch = 0.45;
constexpr double kLeastMatchOfMany = 0.3;
constexpr double kMany = 3.3;
constexpr double kLeastSeconds = 0.3;
// Each partial's line can be split in two by a gap or a jump, and where an echo takes the outermost one the comb can be
// found one step off: all of these are tried, in Hz.
constexpr double kSpeedsTriedHz[] = {0.0, -0.4, 0.4, -kPartialStepHz, kPartialStepHz};
// Automatic gain is followed over one period of the envelope.
constexpr double kGainSeconds = 0.1;
constexpr double kAroundSeconds = 0.03;
constexpr double kNoisePowerShare = 1e-9;  // of the tone's, so that a perfect path has noise too
// While the speed is known from a short time alone, what lies further off fits less well.
constexpr double kUnexplained[] = {0.05, 0.03, 0.02, 0.01, 0.01};
// The course of things and the fit are found in turn, until the speed changes no more.
constexpr int kLeastRounds = 3;
constexpr int kMostRounds = 10;
constexpr double kSteadySpeed = 1e-6;
constexpr double kMostUnexplained = 0.25;
constexpr double kMostUnexplainedSeed = 0.6;  // seven partials leave nine tenths of noise
constexpr double kMostCorrection = 5e-4;      // of the speed, in one step
// By how many steps of the format an amplitude is wrong when nothing but the tone is rounded, which isn't noise then; and
// when the tone has but a few steps.
constexpr double kRounding = 0.08;
constexpr double kCoarseRounding = 0.5;
constexpr double kFewSteps = 2.0;
constexpr double kLeastErrorShare = 1e-5;

// The least step between neighbouring samples, 0 when none differ.
double FindStep(std::span<const double> samples) {
  double step = std::numeric_limits<double>::infinity();
  for (std::size_t n = 1; n < samples.size(); ++n) {
    const double difference = std::abs(samples[n] - samples[n - 1]);
    if (difference > 1e-9) step = std::min(step, difference);
  }
  return std::isfinite(step) ? step : 0.0;
}

double ShareOf(std::vector<double>& values, double share) {
  if (values.empty()) return 0.0;
  const auto place = values.begin() + static_cast<std::ptrdiff_t>(share * static_cast<double>(values.size()));
  std::nth_element(values.begin(), place, values.end());
  return *place;
}

// What the fit misses by value, as a mean square: noise, and a share of the tone's power around the value for what bends
// it. Both are taken from the values with a weight; that share is three times the upper quartile where the tone is loud.
std::vector<double> FindMissed(const Baseband& baseband, std::span<const Complex> expected,
                               std::span<const double> weights, double tonePower, double step) {
  const std::size_t count = weights.size();
  const auto reach = static_cast<std::size_t>(kAroundSeconds / baseband.SecondsPerValue());
  std::vector<double> sums(count + 1);
  for (std::size_t m = 0; m < count; ++m) sums[m + 1] = sums[m] + std::norm(expected[m]);
  std::vector<double> around(count);
  std::vector<double> powers;
  for (std::size_t m = 0; m < count; ++m) {
    const std::size_t first = m - std::min(m, reach);
    const std::size_t last = std::min(count, m + reach + 1);
    around[m] = (sums[last] - sums[first]) / static_cast<double>(last - first);
    if (weights[m] > 0.0) powers.push_back(std::norm(baseband.values[m] - expected[m]));
  }
  // The power of noise is distributed exponentially, with its median at ln 2 of its mean.
  const double noise = ShareOf(powers, 0.5) / std::numbers::ln2 + kNoisePowerShare * tonePower + 1e-30;
  std::vector<double> shares;
  for (std::size_t m = 0; m < count; ++m) {
    if (weights[m] == 0.0 || std::norm(expected[m]) < tonePower) continue;
    shares.push_back((std::norm(baseband.values[m] - expected[m]) - 3.0 * noise) / around[m]);
  }
  const double share = std::max(kLeastErrorShare, 3.0 * ShareOf(shares, 0.75));
  for (std::size_t m = 0; m < count; ++m) {
    const bool isCoarse = std::norm(expected[m]) < kFewSteps * kFewSteps * step * step;
    const double rounding = (isCoarse ? kCoarseRounding : kRounding) * step;
    around[m] = noise + share * around[m] + rounding * rounding;
  }
  return around;
}

// The gain value by value: a line through what surrounds it, by least squares with a Hann window (W. Cleveland, "Robust
// locally weighted regression", 1979). Where little of the tone is heard it stays near 1.
// `expected` is the tone without its gain, and 0 where it isn't heard.
std::vector<double> FollowGain(const Baseband& baseband, std::span<const Complex> expected, double tonePower) {
  const std::size_t count = baseband.values.size();
  std::vector<double> product(count);
  std::vector<double> energy(count);
  for (std::size_t m = 0; m < count; ++m) {
    product[m] = (std::conj(expected[m]) * baseband.values[m]).real();
    energy[m] = std::norm(expected[m]);
  }
  const auto half = static_cast<std::size_t>(kGainSeconds / baseband.SecondsPerValue());
  std::vector<double> window(half);
  for (std::size_t i = 0; i < half; ++i) {
    window[i] = 0.5 + 0.5 * Phasor(0.5 * static_cast<double>(i) / static_cast<double>(half)).real();
  }
  const double steady = 0.05 * static_cast<double>(half) * tonePower;
  const auto reach = static_cast<std::ptrdiff_t>(half);
  const auto size = static_cast<std::ptrdiff_t>(count);
  std::vector<double> followed(count);
  for (std::ptrdiff_t m = 0; m < size; ++m) {
    double product0 = steady;
    double product1 = 0.0;
    double energy0 = steady;
    double energy1 = 0.0;
    double energy2 = steady;
    for (std::ptrdiff_t i = std::max(-m, 1 - reach); i < std::min(size - m, reach); ++i) {
      const double weight = window[static_cast<std::size_t>(std::abs(i))];
      const double time = static_cast<double>(i) / static_cast<double>(half);
      const double p = weight * product[static_cast<std::size_t>(m + i)];
      const double e = weight * energy[static_cast<std::size_t>(m + i)];
      product0 += p;
      product1 += p * time;
      energy0 += e;
      energy1 += e * time;
      energy2 += e * time * time;
    }
    const double gain = (product0 * energy2 - product1 * energy1) / (energy0 * energy2 - energy1 * energy1);
    followed[static_cast<std::size_t>(m)] = std::clamp(gain, 0.05, 20.0);
  }
  return followed;
}

// The tone without its gain where it is heard, with the delay that it has there.
std::vector<Complex> HeardTone(const ToneTimeline& timeline, std::span<const double> gains) {
  std::vector<Complex> heard(gains.size());
  for (std::size_t m = 0; m < heard.size(); ++m) {
    const std::size_t state = timeline.states[m];
    if (ToneTimeline::IsTone(state)) heard[m] = timeline.expected[state][m] / gains[m];
  }
  return heard;
}

// Fits the tone to the values with a weight, corrects the speed and fits again. Returns the correction as a share.
double FitAndTune(std::span<const double> weights, ToneSearch& search) {
  const FitInput input{search.baseband, weights, search.gains};
  search.tone = FitTone(input);
  const double share = std::clamp(SpeedCorrection(input, search.tone), -kMostCorrection, kMostCorrection);
  search.speed *= 1.0 + share;
  Retune(search.baseband, share);
  search.tone = FitTone(input);
  return share;
}

double ExplainedShare(const ToneSearch& search) {
  double energy = 1e-300;
  double missed = 0.0;
  for (std::size_t m = search.timeline.first; m < search.timeline.last; ++m) {
    const std::size_t state = search.timeline.states[m];
    const Complex value = search.baseband.values[m];
    energy += std::norm(value);
    const std::size_t nearest = ToneTimeline::IsTone(state) ? state : 0;
    missed += std::min(std::norm(value), std::norm(value - search.timeline.expected[nearest][m]));
  }
  return std::clamp(1.0 - missed / energy, 0.0, 1.0);
}

bool HasPattern(const FittedTone& tone) {
  const double match = tone.PatternMatch();
  return match >= kLeastMatch || (match >= kLeastMatchOfMany && tone.EffectivePartials() >= kMany);
}

}  // namespace

ToneSearch FindTone(std::span<const double> samples, double rate) {
  ToneSearch search;
  const CombFound comb = FindComb(TransformStretch(samples, rate, StretchWindow::kRectangular));
  if (comb.amplitude <= 0.0) return search;

  search.step = FindStep(samples);
  const Baseband combed = Demodulate(samples, rate, comb.speed);
  ToneConsensus consensus;
  for (const double hertz : kSpeedsTriedHz) {
    Baseband baseband = combed;
    Retune(baseband, hertz / kToneHz);
    ToneConsensus found = FindConsensus(baseband);
    if (search.baseband.values.empty() || found.explained > consensus.explained) {
      search.speed = comb.speed * (1.0 + hertz / kToneHz);
      search.baseband = std::move(baseband);
      consensus = std::move(found);
    }
  }

  if (consensus.unexplainedShare > kMostUnexplainedSeed) return search;

  // What one quarter of a second has found grows over all that it explains as well as itself.
  search.tone = consensus.tone;
  search.gains.assign(search.baseband.values.size(), 1.0);
  const double unexplained = std::clamp(4.0 * consensus.unexplainedShare, 0.01, kMostUnexplained);
  std::vector<double> weights;
  for (const double share : kUnexplained) {
    weights = ExplainedBlocks(search.baseband, search.tone, std::max(unexplained, share));
    FitAndTune(weights, search);
  }
  const std::vector<double> grown = weights;
  std::vector<Complex> heard = search.tone.Envelope(search.baseband);
  for (std::size_t m = 0; m < heard.size(); ++m) heard[m] *= weights[m];
  double correction = 1.0;
  for (int round = 0; round < kLeastRounds || (round < kMostRounds && std::abs(correction) > kSteadySpeed); ++round) {
    // The mean square of a complex envelope is twice that of the sound.
    const double tonePower = 2.0 * search.tone.Power();
    search.gains = FollowGain(search.baseband, heard, tonePower);
    correction = FitAndTune(weights, search);
    std::vector<Complex> expected = search.tone.Envelope(search.baseband);
    for (std::size_t m = 0; m < expected.size(); ++m) expected[m] *= search.gains[m];
    search.missed = FindMissed(search.baseband, expected, grown, tonePower, search.step);
    search.timeline = TraceTone(search.baseband, search.tone, search.gains, search.missed);
    if (std::count(search.timeline.states.begin(), search.timeline.states.end(), 0) == 0) break;
    for (std::size_t m = 0; m < weights.size(); ++m) weights[m] = search.timeline.states[m] == 0 ? 1.0 : 0.0;
    heard = HeardTone(search.timeline, search.gains);
  }
  search.explainedShare = ExplainedShare(search);
  const auto usual = std::count(search.timeline.states.begin(), search.timeline.states.end(), 0);
  search.heard = static_cast<double>(usual) * search.baseband.SecondsPerValue() >= kLeastSeconds &&
                 search.explainedShare >= kLeastShare && HasPattern(search.tone);
  return search;
}

}  // namespace host
