#include "host/analysis/tone_timeline.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "host/analysis/delay_search.h"

namespace host {
namespace {

using Complex = std::complex<double>;

constexpr double kStretchSeconds = 0.1;
constexpr std::size_t kMostDelays = 8;
// What the fit may miss of the tone's power in a good path, beside noise.
constexpr double kFitError = 1e-4;
// A value further from everything than this many times the noise is something else. Noise's own distances are
// exponentially distributed around 1.
constexpr double kOtherCost = 10.0;
constexpr double kChangeCost = 12.0;

std::vector<Complex> ExpectedTone(const Baseband& baseband, const FittedTone& tone, double delaySeconds,
                                  std::span<const double> gains) {
  std::vector<Complex> expected = tone.Envelope(baseband, delaySeconds);
  for (std::size_t m = 0; m < expected.size(); ++m) expected[m] *= gains[m];
  return expected;
}

double Distance(std::span<const Complex> values, std::span<const Complex> expected, std::size_t first, std::size_t last) {
  double sum = 0.0;
  for (std::size_t m = first; m < last; ++m) sum += std::norm(values[m] - expected[m]);
  return sum;
}

// Adds the delays with which the tone goes on after something was lost or heard twice.
void FindDelays(const Baseband& baseband, const FittedTone& tone, std::span<const double> gains, double noisePower,
                ToneTimeline& timeline) {
  const auto stretch = static_cast<std::size_t>(kStretchSeconds / baseband.SecondsPerValue());
  for (std::size_t first = 0; first + stretch <= baseband.values.size(); first += std::max<std::size_t>(1, stretch / 2)) {
    const std::size_t last = first + stretch;
    double energy = 0.0;
    for (std::size_t m = first; m < last; ++m) energy += std::norm(baseband.values[m]);
    double distance = energy;
    for (const auto& expected : timeline.expected) {
      distance = std::min(distance, Distance(baseband.values, expected, first, last));
    }
    const double tolerated = 4.0 * noisePower * static_cast<double>(stretch) + 10.0 * kFitError * energy;
    if (distance < tolerated || timeline.delays.size() == kMostDelays) continue;
    const DelayedFit found = FindDelay(baseband, tone, first, last);
    if (energy - found.explained > 0.5 * distance) continue;
    timeline.delays.push_back(found.delaySeconds);
    timeline.expected.push_back(ExpectedTone(baseband, tone, found.delaySeconds, gains));
  }
}

}  // namespace

ToneTimeline TraceTone(const Baseband& baseband, const FittedTone& tone, std::span<const double> gains,
                       double noisePower) {
  const std::size_t count = baseband.values.size();
  ToneTimeline timeline{.delays = {0.0}, .states = {}, .expected = {ExpectedTone(baseband, tone, 0.0, gains)}};
  FindDelays(baseband, tone, gains, noisePower, timeline);

  const std::size_t delays = timeline.delays.size();
  const std::size_t states = delays + 2;
  std::vector<double> costs(states, 0.0);
  std::vector<std::size_t> from(states * count);
  for (std::size_t m = 0; m < count; ++m) {
    const auto cheapest = static_cast<std::size_t>(std::min_element(costs.begin(), costs.end()) - costs.begin());
    const double changed = costs[cheapest] + (m == 0 ? 0.0 : kChangeCost);
    for (std::size_t state = 0; state < states; ++state) {
      const bool stays = costs[state] <= changed;
      from[m * states + state] = stays ? state : cheapest;
      costs[state] = stays ? costs[state] : changed;
      if (state == delays + 1) {
        costs[state] += kOtherCost;
      } else {
        const Complex expected = state < delays ? timeline.expected[state][m] : Complex();
        const double scale = noisePower + kFitError * std::norm(timeline.expected[0][m]);
        costs[state] += std::norm(baseband.values[m] - expected) / scale;
      }
    }
  }

  timeline.states.resize(count);
  auto state = static_cast<std::size_t>(std::min_element(costs.begin(), costs.end()) - costs.begin());
  for (std::size_t m = count; m-- > 0;) {
    timeline.states[m] = state < delays ? state : ToneTimeline::kSilence + (state - delays);
    state = from[m * states + state];
  }
  const auto isTone = [](std::size_t one) { return ToneTimeline::IsTone(one); };
  const auto first = std::find_if(timeline.states.begin(), timeline.states.end(), isTone);
  const auto last = std::find_if(timeline.states.rbegin(), timeline.states.rend(), isTone).base();
  if (first < last) {
    timeline.first = static_cast<std::size_t>(first - timeline.states.begin());
    timeline.last = static_cast<std::size_t>(last - timeline.states.begin());
  }
  return timeline;
}

}  // namespace host
