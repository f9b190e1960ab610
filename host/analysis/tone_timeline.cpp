#include "host/analysis/tone_timeline.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "host/analysis/delay_search.h"

namespace host {
namespace {

using Complex = std::complex<double>;

// Something else that lasts at least this long may be the tone with another delay.
constexpr double kLeastRunSeconds = 0.012;
constexpr double kEdgeSeconds = 0.003;
constexpr std::size_t kMostDelays = 8;
// An echo needs this long to become steady.
constexpr double kSettlingSeconds = 0.2;
// A value further from everything than this many times the noise is something else. Noise's own distances are
// exponentially distributed around 1.
constexpr double kOtherCost = 7.0;
constexpr double kChangeCost = 10.0;
// One of thousands of delays always suits the noise of some stretch, all the more as neighbouring values share theirs.
constexpr double kDelayCost = 100.0;

std::vector<Complex> ExpectedTone(const Baseband& baseband, const FittedTone& tone, double delaySeconds,
                                  std::span<const double> gains) {
  std::vector<Complex> expected = tone.Envelope(baseband, delaySeconds);
  for (std::size_t m = 0; m < expected.size(); ++m) expected[m] *= gains[m];
  return expected;
}

// Sets the states to those of the least cost, and returns it.
double FindStates(const Baseband& baseband, std::span<const double> missed, ToneTimeline& timeline) {
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
        costs[state] += std::norm(baseband.values[m] - expected) / missed[m];
      }
    }
  }
  timeline.states.resize(count);
  auto state = static_cast<std::size_t>(std::min_element(costs.begin(), costs.end()) - costs.begin());
  const double cost = costs[state];
  for (std::size_t m = count; m-- > 0;) {
    timeline.states[m] = state < delays ? state : ToneTimeline::kSilence + (state - delays);
    state = from[m * states + state];
  }
  return cost;
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

// The loudest run of something else that is long enough and doesn't begin where one was tried before.
std::pair<std::size_t, std::size_t> FindUnexplained(const Baseband& baseband, const ToneTimeline& timeline,
                                                    std::span<const std::size_t> tried) {
  const auto least = static_cast<std::size_t>(kLeastRunSeconds / baseband.SecondsPerValue());
  std::pair<std::size_t, std::size_t> loudest;
  double most = 0.0;
  for (std::size_t first = 0, last; first < timeline.states.size(); first = last) {
    last = first + 1;
    while (last < timeline.states.size() && timeline.states[last] == timeline.states[first]) ++last;
    if (timeline.states[first] != ToneTimeline::kOther || last - first < least) continue;
    if (std::find(tried.begin(), tried.end(), first) != tried.end()) continue;
    double energy = 0.0;
    for (std::size_t m = first; m < last; ++m) energy += std::norm(baseband.values[m]);
    if (energy <= most) continue;
    most = energy;
    loudest = {first, last};
  }
  return loudest;
}

}  // namespace

ToneTimeline TraceTone(const Baseband& baseband, const FittedTone& tone, std::span<const double> gains,
                       std::span<const double> missed) {
  ToneTimeline timeline{.delays = {0.0}, .states = {}, .expected = {ExpectedTone(baseband, tone, 0.0, gains)}};
  double cost = FindStates(baseband, missed, timeline);
  const auto edge = static_cast<std::size_t>(kEdgeSeconds / baseband.SecondsPerValue());
  std::vector<std::size_t> tried;
  while (tried.size() < kMostDelays) {
    const auto [first, last] = FindUnexplained(baseband, timeline, tried);
    if (first == last) break;
    tried.push_back(first);
    ToneTimeline best = timeline;
    // At its edges the baseband's window shows what is beside the run. A gap before or after the tone with another delay
    // is part of the run, but hardly of both its halves.
    const std::size_t inner = first + edge;
    const std::size_t outer = last - edge;
    const std::size_t middle = (first + last) / 2;
    for (const auto& [begin, end] : {std::pair{inner, outer}, std::pair{inner, middle}, std::pair{middle, outer}}) {
      ToneTimeline tryout = timeline;
      tryout.delays.push_back(FindDelay(baseband, tone, begin, end).delaySeconds);
      tryout.expected.push_back(ExpectedTone(baseband, tone, tryout.delays.back(), gains));
      FindStates(baseband, missed, tryout);
      RefineDelays(baseband, tone, gains, tryout);
      const double found = FindStates(baseband, missed, tryout);
      if (found < cost - kDelayCost) {
        cost = found;
        best = std::move(tryout);
      }
    }
    timeline = std::move(best);
  }
  FindEnds(baseband, timeline);
  return timeline;
}

}  // namespace host
