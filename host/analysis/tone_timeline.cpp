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
// An echo needs this long to become steady.
constexpr double kSettlingSeconds = 0.2;
// A value further from everything than this many times the noise is something else. Noise's own distances are
// exponentially distributed around 1.
constexpr double kOtherCost = 10.0;
constexpr double kChangeCost = 12.0;
// One of thousands of delays always suits the noise of some stretch.
constexpr double kDelayCost = 30.0;

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
void FindDelays(const Baseband& baseband, const FittedTone& tone, std::span<const double> gains, const FitError& error,
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
    const double tolerated = 4.0 * error.noisePower * static_cast<double>(stretch) + 10.0 * error.toneShare * energy;
    if (distance < tolerated || timeline.delays.size() == kMostDelays) continue;
    const DelayedFit found = FindDelay(baseband, tone, first, last);
    if (energy - found.explained > 0.5 * distance) continue;
    timeline.delays.push_back(found.delaySeconds);
    timeline.expected.push_back(ExpectedTone(baseband, tone, found.delaySeconds, gains));
  }
}

// Sets the states to those of the least cost.
void FindStates(const Baseband& baseband, const FitError& error, ToneTimeline& timeline) {
  const std::size_t count = baseband.values.size();
  const std::size_t delays = timeline.delays.size();
  const std::size_t states = delays + 2;
  std::vector<double> costs(states, 0.0);
  std::vector<std::size_t> from(states * count);
  for (std::size_t m = 0; m < count; ++m) {
    const auto cheapest = static_cast<std::size_t>(std::min_element(costs.begin(), costs.end()) - costs.begin());
    const double least = costs[cheapest];
    for (std::size_t state = 0; state < states; ++state) {
      const double changed = least + (m == 0 ? 0.0 : kChangeCost) + (state > 0 && state < delays ? kDelayCost : 0.0);
      const bool stays = costs[state] <= changed;
      from[m * states + state] = stays ? state : cheapest;
      costs[state] = stays ? costs[state] : changed;
      if (state == delays + 1) {
        costs[state] += kOtherCost;
      } else {
        const Complex expected = state < delays ? timeline.expected[state][m] : Complex();
        costs[state] += std::norm(baseband.values[m] - expected) / error.At(timeline.expected[0][m]);
      }
    }
  }
  timeline.states.resize(count);
  auto state = static_cast<std::size_t>(std::min_element(costs.begin(), costs.end()) - costs.begin());
  for (std::size_t m = count; m-- > 0;) {
    timeline.states[m] = state < delays ? state : ToneTimeline::kSilence + (state - delays);
    state = from[m * states + state];
  }
}

// Finds each delay anew over the longest time for which the tone had it: a stretch may have had more than one.
void RefineDelays(const Baseband& baseband, const FittedTone& tone, std::span<const double> gains,
                  ToneTimeline& timeline) {
  std::vector<std::size_t> longest(timeline.delays.size());
  for (std::size_t first = 0, last; first < timeline.states.size(); first = last) {
    const std::size_t state = timeline.states[first];
    last = first + 1;
    while (last < timeline.states.size() && timeline.states[last] == state) ++last;
    if (!ToneTimeline::IsTone(state) || state == 0 || last - first <= longest[state]) continue;
    longest[state] = last - first;
    timeline.delays[state] = FindDelay(baseband, tone, first, last).delaySeconds;
  }
  for (std::size_t state = 1; state < timeline.delays.size(); ++state) {
    if (longest[state] > 0) timeline.expected[state] = ExpectedTone(baseband, tone, timeline.delays[state], gains);
  }
}

void FindEnds(const Baseband& baseband, ToneTimeline& timeline) {
  const std::vector<std::size_t>& states = timeline.states;
  const auto isTone = [](std::size_t one) { return ToneTimeline::IsTone(one); };
  const auto first = std::find_if(states.begin(), states.end(), isTone);
  const auto last = std::find_if(states.rbegin(), states.rend(), isTone).base();
  if (first >= last) return;
  timeline.first = static_cast<std::size_t>(first - states.begin());
  timeline.last = static_cast<std::size_t>(last - states.begin());
  std::size_t settling = timeline.first;
  while (settling > 0 && states[settling - 1] == ToneTimeline::kOther) --settling;
  const double seconds = static_cast<double>(timeline.first - settling) * baseband.SecondsPerValue();
  if (seconds <= kSettlingSeconds) timeline.first = settling;
}

}  // namespace

ToneTimeline TraceTone(const Baseband& baseband, const FittedTone& tone, std::span<const double> gains,
                       const FitError& error) {
  ToneTimeline timeline{.delays = {0.0}, .states = {}, .expected = {ExpectedTone(baseband, tone, 0.0, gains)}};
  FindDelays(baseband, tone, gains, error, timeline);
  FindStates(baseband, error, timeline);
  if (timeline.delays.size() > 1) {
    RefineDelays(baseband, tone, gains, timeline);
    FindStates(baseband, error, timeline);
  }
  FindEnds(baseband, timeline);
  return timeline;
}

}  // namespace host
