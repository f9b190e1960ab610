#include "host/analysis/tone_search.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "host/analysis/speed.h"

namespace host {
namespace {

using Complex = std::complex<double>;

constexpr double kLeastShare = 0.5;
constexpr double kLeastPartials = 2.5;
constexpr double kLeastSeconds = 0.3;
// Below this there is no room for the tone at any speed that is looked for.
constexpr double kLeastRate = 2400.0;
// Each partial's line can be split in two by a gap or a jump, and where an echo takes the outermost one the comb can be
// found one step off: all of these are tried, in Hz.
constexpr double kSpeedsTriedHz[] = {0.0, -0.4, 0.4, -kPartialStepHz, kPartialStepHz};
// Automatic gain is followed over one period of the envelope.
constexpr double kGainSeconds = 0.1;
constexpr double kNoisePowerShare = 1e-9;  // of the tone's, so that a perfect path has noise too

double NoisePower(const Baseband& baseband, std::span<const Complex> expected, std::span<const double> weights,
                  double tonePower) {
  std::vector<double> powers;
  for (std::size_t m = 0; m < weights.size(); ++m) {
    if (weights[m] > 0.0) powers.push_back(std::norm(baseband.values[m] - expected[m]));
  }
  // The power of noise is distributed exponentially, with its median at ln 2 of its mean.
  const double noise = powers.empty() ? 0.0 : MiddleOf(powers) / std::numbers::ln2;
  return noise + kNoisePowerShare * tonePower + 1e-30;
}

// The gain value by value, by least squares over what surrounds it with a Hann window. Where little of the tone is heard
// it stays near 1.
std::vector<double> FollowGain(const Baseband& baseband, const ToneTimeline& timeline, std::span<const double> gains,
                               double tonePower) {
  const std::size_t count = baseband.values.size();
  std::vector<double> product(count);
  std::vector<double> energy(count);
  for (std::size_t m = 0; m < count; ++m) {
    if (!ToneTimeline::IsTone(timeline.states[m])) continue;
    const Complex expected = timeline.expected[timeline.states[m]][m] / gains[m];
    product[m] = (std::conj(expected) * baseband.values[m]).real();
    energy[m] = std::norm(expected);
  }
  const auto half = static_cast<std::size_t>(kGainSeconds / baseband.SecondsPerValue());
  std::vector<double> window(half);
  for (std::size_t i = 0; i < half; ++i) {
    window[i] = 0.5 + 0.5 * Phasor(0.5 * static_cast<double>(i) / static_cast<double>(half)).real();
  }
  const double steady = 0.05 * static_cast<double>(half) * tonePower;
  std::vector<double> followed(count);
  for (std::size_t m = 0; m < count; ++m) {
    double productSum = steady;
    double energySum = steady;
    for (std::size_t i = 0; i < half; ++i) {
      if (i <= m) {
        productSum += window[i] * product[m - i];
        energySum += window[i] * energy[m - i];
      }
      if (i > 0 && m + i < count) {
        productSum += window[i] * product[m + i];
        energySum += window[i] * energy[m + i];
      }
    }
    followed[m] = std::clamp(productSum / energySum, 0.05, 20.0);
  }
  return followed;
}

double ExplainedShare(const ToneSearch& search) {
  double energy = 1e-300;
  double missed = 0.0;
  for (std::size_t m = search.timeline.first; m < search.timeline.last; ++m) {
    const std::size_t state = search.timeline.states[m];
    const Complex value = search.baseband.values[m];
    energy += std::norm(value);
    missed += std::norm(ToneTimeline::IsTone(state) ? value - search.timeline.expected[state][m] : value);
  }
  return std::clamp(1.0 - missed / energy, 0.0, 1.0);
}

}  // namespace

double MiddleOf(std::span<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

ToneSearch FindTone(std::span<const double> samples, double rate) {
  ToneSearch search;
  if (rate < kLeastRate || static_cast<double>(samples.size()) < kLeastSeconds * rate) return search;
  const CombFound comb = FindComb(TransformStretch(samples, rate, StretchWindow::kRectangular));
  if (comb.amplitude <= 0.0) return search;

  ToneConsensus consensus;
  for (const double hertz : kSpeedsTriedHz) {
    const double speed = comb.speed * (1.0 + hertz / kToneHz);
    Baseband baseband = Demodulate(samples, rate, speed);
    ToneConsensus found = FindConsensus(baseband);
    if (search.baseband.values.empty() || found.explained > consensus.explained) {
      search.speed = speed;
      search.baseband = std::move(baseband);
      consensus = std::move(found);
    }
  }

  std::vector<double> weights = std::move(consensus.weights);
  search.tone = consensus.tone;
  search.gains.assign(search.baseband.values.size(), 1.0);
  for (int round = 0; round < 5; ++round) {
    search.tone = FitTone({search.baseband, weights, search.gains});
    if (round < 3) {
      const double correction = SpeedCorrection({search.baseband, weights, search.gains}, search.tone);
      search.speed *= 1.0 + std::clamp(correction, -5e-4, 5e-4);
      search.baseband = Demodulate(samples, rate, search.speed);
      weights.resize(search.baseband.values.size());
      search.gains.resize(search.baseband.values.size(), 1.0);
      search.tone = FitTone({search.baseband, weights, search.gains});
    }
    std::vector<Complex> expected = search.tone.Envelope(search.baseband);
    for (std::size_t m = 0; m < expected.size(); ++m) expected[m] *= search.gains[m];
    // The mean square of a complex envelope is twice that of the sound.
    const double tonePower = 2.0 * search.tone.Power();
    const double noise = NoisePower(search.baseband, expected, weights, tonePower);
    search.timeline = TraceTone(search.baseband, search.tone, search.gains, noise);
    for (std::size_t m = 0; m < weights.size(); ++m) weights[m] = search.timeline.states[m] == 0 ? 1.0 : 0.0;
    search.gains = FollowGain(search.baseband, search.timeline, search.gains, tonePower);
  }
  search.explainedShare = ExplainedShare(search);
  const auto heard = std::count_if(search.timeline.states.begin(), search.timeline.states.end(),
                                   [](std::size_t state) { return ToneTimeline::IsTone(state); });
  search.heard = static_cast<double>(heard) * search.baseband.SecondsPerValue() >= kLeastSeconds &&
                 search.explainedShare >= kLeastShare && search.tone.EffectivePartials() >= kLeastPartials;
  return search;
}

}  // namespace host
