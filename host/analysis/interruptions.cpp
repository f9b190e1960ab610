#include "host/analysis/interruptions.h"

#include <algorithm>
#include <cmath>

#include "host/analysis/delay_search.h"
#include "host/analysis/level.h"
#include "host/analysis/silences.h"

namespace host {
namespace {

using Complex = std::complex<double>;

// Disturbances this near to each other are one.
constexpr double kJoinedSeconds = 0.015;
// An echo needs this long to become steady, and until then the tone isn't as expected.
constexpr double kSettlingSeconds = 0.22;
constexpr double kQuietBeginSeconds = 0.06;
constexpr double kUnsteadySeconds = 0.01;
constexpr double kEndingSeconds = 0.05;  // where little but echoes is left of it
// How much earlier a repeated sound was heard first, and the share of what the tone misses that it may miss.
constexpr double kLeastRepeatSeconds = 0.0005;
constexpr double kMostRepeatSeconds = 0.05;
constexpr double kRepeatShare = 0.25;
constexpr double kLongestRepeatSeconds = 0.025;
constexpr double kHostSeconds = 0.015;
constexpr double kLoudPower = 1.0 / 16.0;  // of the envelope's peak
constexpr double kEarlyLoudPower = 1.0 / 32.0;
// A delay is believed when this much of the peak was heard with it or it lasted this
// long, and all but this share of the energy is explained.
constexpr double kConvincingPower = 0.25;
constexpr double kConvincingSeconds = 0.06;
constexpr double kConvincingError = 0.02;
constexpr double kSilentPower = 0.25;  // of the expected tone's
// How much of what was expected must be silent in a gap: through the baseband's window its edges aren't.
constexpr double kSilentShare = 0.4;
// By how much that window widens everything.
constexpr double kSmearSeconds = 0.003;
// Less than this can be the change from one phase to another.
constexpr double kBriefSeconds = 2.0 * kSmearSeconds;
// As few values as those see the same noise, which is this many times its mean in one of 10^8.
constexpr double kBriefSurprise = 20.0;
// A shift by less is the error of two delays.
constexpr double kLeastShiftSeconds = 10e-6;

// The values that aren't explained by the tone as it went on before, and the state afterwards.
struct Run {
  std::size_t first;
  std::size_t last;
  std::size_t before;
  std::size_t after;
};

// Whether the tone is heard loud and clear from `first` to before `last` with the state that it has there. With its usual
// delay it always is.
bool IsConvincing(const ToneSearch& search, std::size_t first, std::size_t last, double peak) {
  const std::size_t state = search.timeline.states[first];
  if (!ToneTimeline::IsTone(state)) return false;
  if (state == 0) return true;
  double energy = 0.0;
  double missed = 0.0;
  double loudest = 0.0;
  for (std::size_t m = first; m < last; ++m) {
    const Complex expected = search.timeline.expected[state][m];
    energy += std::norm(search.baseband.values[m]);
    missed += std::norm(search.baseband.values[m] - expected);
    loudest = std::max(loudest, std::norm(expected));
  }
  const bool enough = loudest > kConvincingPower * peak ||
                      static_cast<double>(last - first) * search.baseband.SecondsPerValue() > kConvincingSeconds;
  return enough && missed < kConvincingError * energy;
}

// The states, but for delays that aren't convincing. While an echo builds up, in what is left of it at the end, and where
// the tone is quiet, the tone can seem to have any delay.
std::vector<std::size_t> ConvincingStates(const ToneSearch& search, double peak) {
  std::vector<std::size_t> states = search.timeline.states;
  for (std::size_t first = search.timeline.first, last; first < search.timeline.last; first = last) {
    last = first + 1;
    while (last < search.timeline.last && states[last] == states[first]) ++last;
    if (IsConvincing(search, first, last, peak)) continue;
    std::fill(states.begin() + static_cast<std::ptrdiff_t>(first), states.begin() + static_cast<std::ptrdiff_t>(last),
              ToneTimeline::kOther);
  }
  return states;
}

std::vector<Run> FindRuns(const ToneSearch& search, double peak) {
  const auto merged = static_cast<std::size_t>(kJoinedSeconds / search.baseband.SecondsPerValue());
  const std::vector<std::size_t> states = ConvincingStates(search, peak);
  std::vector<Run> runs;
  std::size_t end = 0;  // of the last value that `state` explained, 0 before there is one
  std::size_t state = 0;
  for (std::size_t m = search.timeline.first; m < search.timeline.last; ++m) {
    const std::size_t now = states[m];
    if (!ToneTimeline::IsTone(now)) continue;
    if (end == 0) {
      state = now;
      end = m;
    }
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

// Whether echoes build up at the tone's begin: more than a moment of the time that they take isn't explained, the run itself
// excepted, or should be loud and comes before the tone is heard, as echoes of the tone's last swell would be there.
bool IsBuildingUp(const ToneSearch& search, const Run& run, double peak) {
  const auto values = [&](double seconds) {
    return static_cast<std::size_t>(seconds / search.baseband.SecondsPerValue());
  };
  const std::size_t settled = std::min(search.timeline.last, search.timeline.first + values(kSettlingSeconds));
  const std::size_t margin = values(kSmearSeconds);
  std::size_t unexplained = 0;
  const std::size_t first = search.timeline.first;
  for (std::size_t m = first - std::min(first, values(kQuietBeginSeconds)); m < first; ++m) {
    unexplained += std::norm(search.timeline.expected[0][m]) > kLoudPower * peak ? 1 : 0;
  }
  for (std::size_t m = first; m < settled; ++m) {
    const bool own = m + margin >= run.first && m < run.last + margin;
    unexplained += !own && search.timeline.states[m] == ToneTimeline::kOther ? 1 : 0;
  }
  return unexplained > values(kUnsteadySeconds);
}

// Whether the tone as it was some time before explains these values far better than the tone itself does.
bool IsRepeated(const ToneSearch& search, const Run& run) {
  // At its edges the baseband's window shows both.
  const std::size_t edge = run.last - run.first > 6 ? 2 : 0;
  double energy = 0.0;
  double missed = 0.0;
  for (std::size_t m = run.first + edge; m < run.last - edge; ++m) {
    energy += std::norm(search.baseband.values[m]);
    missed += std::norm(search.baseband.values[m] - search.timeline.expected[run.before][m]);
  }
  const double delay = search.timeline.delays[run.before];
  const DelayedFit found = FindDelay(search.baseband, search.tone, run.first + edge, run.last - edge,
                                     delay + kLeastRepeatSeconds, delay + kMostRepeatSeconds);
  return energy - found.explained < kRepeatShare * missed;
}

bool IsSilent(const ToneSearch& search, const Run& run) {
  double expected = 0.0;
  double silent = 0.0;
  for (std::size_t m = run.first; m < run.last; ++m) {
    const double power = std::norm(search.timeline.expected[run.before][m]);
    expected += power;
    if (std::norm(search.baseband.values[m]) < kSilentPower * power) silent += power;
  }
  return expected > 0.0 && silent > kSilentShare * expected;
}

InterruptionKind KindOf(const ToneSearch& search, const Run& run, bool brief, double shiftSeconds) {
  // Where the tone goes on in another phase, it is silent for a moment as the baseband shows it.
  if (!(brief && shiftSeconds != 0.0) && IsSilent(search, run)) return InterruptionKind::kGap;
  if (shiftSeconds > 0.0) return InterruptionKind::kRepeat;
  if (shiftSeconds < 0.0) return InterruptionKind::kLoss;
  return IsRepeated(search, run) ? InterruptionKind::kRepeat : InterruptionKind::kDisturbance;
}

// Adds what falls silent while an echo builds up, when the tone isn't as expected anyway.
void AddEarlySilences(const ToneSearch& search, double peak, std::vector<ToneInterruption>& interruptions) {
  const Baseband& baseband = search.baseband;
  const auto settled = search.timeline.first + static_cast<std::size_t>(kSettlingSeconds / baseband.SecondsPerValue());
  const std::size_t last = std::min(search.timeline.last, settled);
  for (const auto& [begin, end] : FindSilences(baseband, search.timeline.first, last, kEarlyLoudPower * peak)) {
    ToneInterruption silence;
    silence.beginSeconds = (baseband.Seconds(begin) - 0.5 * kSmearSeconds) / search.speed;
    silence.lengthSeconds =
        (static_cast<double>(end - begin) * baseband.SecondsPerValue() + kSmearSeconds) / search.speed;
    silence.levelDb = kSilenceDb;
    const double middle = silence.beginSeconds + 0.5 * silence.lengthSeconds;
    const bool isKnown = std::any_of(interruptions.begin(), interruptions.end(), [&](const ToneInterruption& known) {
      return middle > known.beginSeconds - kSmearSeconds &&
             middle < known.beginSeconds + known.lengthSeconds + kSmearSeconds;
    });
    if (!isKnown) interruptions.push_back(silence);
  }
  std::sort(interruptions.begin(), interruptions.end(),
            [](const auto& one, const auto& other) { return one.beginSeconds < other.beginSeconds; });
}

}  // namespace

std::vector<ToneInterruption> FindInterruptions(const ToneSearch& search, std::span<const double> hostLosses) {
  const ToneTimeline& timeline = search.timeline;
  const std::vector<Complex>& steady = timeline.expected[0];
  double peak = 0.0;
  for (std::size_t m = timeline.first; m < timeline.last; ++m) peak = std::max(peak, std::norm(steady[m]));

  std::vector<ToneInterruption> interruptions;
  const double perValue = search.baseband.SecondsPerValue();
  const auto edge = static_cast<std::size_t>(2.0 * kSmearSeconds / perValue);
  for (const Run& run : FindRuns(search, peak)) {
    double expected = 1e-300;
    double heard = 0.0;
    double missed = 0.0;
    double surprise = 0.0;
    double loudest = 0.0;
    for (std::size_t m = run.first; m < run.last; ++m) {
      const double power = std::norm(timeline.expected[run.before][m]);
      expected += power;
      heard += std::norm(search.baseband.values[m]);
      const double difference = std::norm(search.baseband.values[m] - timeline.expected[run.before][m]);
      missed += difference;
      surprise += difference / search.missed[m];
      loudest = std::max(loudest, power);
    }
    const double length = static_cast<double>(run.last - run.first) * perValue;
    double shift = timeline.delays[run.after] - timeline.delays[run.before];
    if (std::abs(shift) < kLeastShiftSeconds) shift = 0.0;
    if (shift == 0.0 && loudest < kLoudPower * peak) continue;
    const bool brief = length < kBriefSeconds;
    const bool isLikely = surprise < kBriefSurprise * static_cast<double>(run.last - run.first);
    if (shift == 0.0 && length < 1.1 * kSmearSeconds && missed < kSilentPower * expected && isLikely) continue;
    const double begin = search.baseband.Seconds(run.first);
    ToneInterruption found;
    found.kind = KindOf(search, run, brief, shift);
    // What isn't as expected needn't be an interruption while echoes build up, or in what is left of them at the end.
    const bool early = begin - search.baseband.Seconds(timeline.first) < kSettlingSeconds;
    const bool late = begin > search.baseband.Seconds(timeline.last) - kEndingSeconds &&
                      timeline.last + edge < search.baseband.values.size();
    const bool isClear = found.kind == InterruptionKind::kRepeat && length <= kLongestRepeatSeconds &&
                         loudest >= 2.0 * kLoudPower * peak;
    if (shift == 0.0 && found.kind != InterruptionKind::kGap && (early || late) &&
        (!isClear || (early && IsBuildingUp(search, run, peak)))) {
      continue;
    }
    // Times of the tone's own become those of the recording.
    const double smear = std::min(kSmearSeconds, length);
    found.beginSeconds = (begin + 0.5 * smear) / search.speed;
    found.lengthSeconds = (length - smear) / search.speed;
    found.shiftSeconds = shift / search.speed;
    found.levelDb = run.last > run.first ? PowerDb(heard / expected) : 0.0;
    interruptions.push_back(found);
  }
  AddEarlySilences(search, peak, interruptions);
  for (ToneInterruption& found : interruptions) {
    found.byHost = std::any_of(hostLosses.begin(), hostLosses.end(), [&](double seconds) {
      return seconds > found.beginSeconds - kHostSeconds &&
             seconds < found.beginSeconds + found.lengthSeconds + kHostSeconds;
    });
  }
  return interruptions;
}

}  // namespace host
