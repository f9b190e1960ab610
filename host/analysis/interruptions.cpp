#include "host/analysis/interruptions.h"

#include <algorithm>
#include <cmath>

#include "host/analysis/delay_search.h"
#include "host/analysis/level.h"

namespace host {
namespace {

using Complex = std::complex<double>;

// Disturbances this near to each other are one.
constexpr double kMergeSeconds = 0.015;
// An echo needs this long to become steady, and until then covers the tone.
constexpr double kSettlingSeconds = 0.15;
constexpr double kHostSeconds = 0.015;
constexpr double kLoudPower = 1.0 / 16.0;  // of the envelope's peak
constexpr double kSilentPower = 0.25;      // of the expected tone's

// The values that aren't explained by the tone as it went on before, and the state afterwards.
struct Run {
  std::size_t first;
  std::size_t last;
  std::size_t before;
  std::size_t after;
};

std::vector<Run> FindRuns(const ToneTimeline& timeline, double secondsPerValue) {
  const auto merged = static_cast<std::size_t>(kMergeSeconds / secondsPerValue);
  std::vector<Run> runs;
  std::size_t state = timeline.states[timeline.first];
  std::size_t end = timeline.first;  // of the last value that `state` explained
  for (std::size_t m = timeline.first; m < timeline.last; ++m) {
    const std::size_t now = timeline.states[m];
    if (!ToneTimeline::IsTone(now)) continue;
    if (m > end || now != state) {
      if (!runs.empty() && end - runs.back().last < merged) {
        runs.back().last = m;
        runs.back().after = now;
      } else {
        runs.push_back({end, m, state, now});
      }
    }
    state = now;
    end = m + 1;
  }
  return runs;
}

// Whether the tone as it was some time before explains these values far better than the tone itself does.
bool IsRepeated(const ToneSearch& search, const Run& run) {
  double energy = 0.0;
  double missed = 0.0;
  for (std::size_t m = run.first; m < run.last; ++m) {
    energy += std::norm(search.baseband.values[m]);
    missed += std::norm(search.baseband.values[m] - search.timeline.expected[run.before][m]);
  }
  const DelayedFit found = FindDelay(search.baseband, search.tone, run.first, run.last);
  const double later = found.delaySeconds - search.timeline.delays[run.before];
  return later > 0.0005 && energy - found.explained < 0.25 * missed;
}

InterruptionKind KindOf(const ToneSearch& search, const Run& run, double power, double shiftSeconds) {
  if (run.last > run.first && power < kSilentPower) return InterruptionKind::kGap;
  if (shiftSeconds > 0.0) return InterruptionKind::kRepeat;
  if (shiftSeconds < 0.0) return InterruptionKind::kLoss;
  return IsRepeated(search, run) ? InterruptionKind::kRepeat : InterruptionKind::kDisturbance;
}

}  // namespace

std::vector<Interruption> FindInterruptions(const ToneSearch& search, std::span<const double> hostLosses) {
  const ToneTimeline& timeline = search.timeline;
  const std::vector<Complex>& steady = timeline.expected[0];
  double peak = 0.0;
  for (std::size_t m = timeline.first; m < timeline.last; ++m) peak = std::max(peak, std::norm(steady[m]));

  std::vector<Interruption> interruptions;
  const double perValue = search.baseband.SecondsPerValue();
  for (const Run& run : FindRuns(timeline, perValue)) {
    double expected = 1e-300;
    double heard = 0.0;
    double loudest = 0.0;
    for (std::size_t m = run.first; m < run.last; ++m) {
      const double power = std::norm(timeline.expected[run.before][m]);
      expected += power;
      heard += std::norm(search.baseband.values[m]);
      loudest = std::max(loudest, power);
    }
    const double shift = timeline.delays[run.after] - timeline.delays[run.before];
    if (run.before == run.after && loudest < kLoudPower * peak) continue;
    Interruption found;
    found.kind = KindOf(search, run, heard / expected, shift);
    const double begin = search.baseband.Seconds(run.first);
    const double sinceBegin = begin - search.baseband.Seconds(timeline.first);
    if (found.kind == InterruptionKind::kDisturbance && sinceBegin < kSettlingSeconds) continue;
    // Times of the tone's own become those of the recording.
    found.beginSeconds = begin / search.speed;
    found.lengthSeconds = static_cast<double>(run.last - run.first) * perValue / search.speed;
    found.shiftSeconds = shift / search.speed;
    found.levelDb = run.last > run.first ? PowerDb(heard / expected) : 0.0;
    found.byHost = std::any_of(hostLosses.begin(), hostLosses.end(), [&](double seconds) {
      return seconds > found.beginSeconds - kHostSeconds &&
             seconds < found.beginSeconds + found.lengthSeconds + kHostSeconds;
    });
    interruptions.push_back(found);
  }
  return interruptions;
}

}  // namespace host
