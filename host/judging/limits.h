#pragma once

#include <optional>
#include <span>
#include <string>
#include <tuple>

#include "host/base/member.h"

namespace host {

// What the figures of a record test must lie within to pass. docs/verdict.md has the measurements behind the defaults.
struct Limits {
  // The module's own figure: the largest absolute sample, full scale 1.0. LimitsInForce has the defaults.
  std::optional<double> minPeak, maxPeak;

  // Good paths reach 0.98. Below this the analysis itself hears no tone.
  double minExplainedShare = 0.75;
  // A room's loudspeaker and microphone come to 20 dB. From 10 dB down gaps and clipping are no longer found.
  double minSignalToNoiseDb = 10.0;
  // Room is lost on one side from a twentieth on, and no good path has a hundredth of that.
  double maxDcOffset = 0.05;
  // Good paths of 8 bits reach -28 dB, and small loudspeakers -20 dB at full level.
  double maxHarmonicsDb = -12.0;
  // Good paths reach 0.002; 2 % of clipped samples come out above this.
  double maxFlatShare = 0.01;
  // Good paths reach 0.2 dB. A compressor is no fault yet.
  double maxPeakCompressionDb = 2.0;
  double maxInterruptions = 0.0;
  // The tone's first and last 70 ms are too quiet to be heard in noise; good paths lose 50 ms.
  double maxLostSeconds = 0.1;
  // Good paths are within 0.003 %, sound hardware within 0.02 %; 0.18 % is found every time.
  double maxSpeedErrorPercent = 0.15;
  // Two microphones of one device differ by some dB, crosstalk into a dead channel is 40 dB down or more.
  double maxChannelDifferenceDb = 40.0;
  double maxInvertedChannels = 0.0;

  static constexpr auto Members() {
    using L = Limits;
    return std::tuple(Member("minPeak", &L::minPeak), Member("maxPeak", &L::maxPeak),
                      Member("minExplainedShare", &L::minExplainedShare),
                      Member("minSignalToNoiseDb", &L::minSignalToNoiseDb), Member("maxDcOffset", &L::maxDcOffset),
                      Member("maxHarmonicsDb", &L::maxHarmonicsDb), Member("maxFlatShare", &L::maxFlatShare),
                      Member("maxPeakCompressionDb", &L::maxPeakCompressionDb),
                      Member("maxInterruptions", &L::maxInterruptions), Member("maxLostSeconds", &L::maxLostSeconds),
                      Member("maxSpeedErrorPercent", &L::maxSpeedErrorPercent),
                      Member("maxChannelDifferenceDb", &L::maxChannelDifferenceDb),
                      Member("maxInvertedChannels", &L::maxInvertedChannels));
  }
};

// One limit: its key, the check that it belongs to, and what it means.
struct LimitRow {
  const char* key;
  const char* check;
  const char* unit;  // empty for a share or a count
  double Limits::*member;
  double least, most;  // what it may be set to
  const char* meaning;
};

// Every limit but the two of the peak.
std::span<const LimitRow> LimitRows();

// The limits in force for a test: those given, and for a peak without one the default. With a tone the least is a hundredth
// of full scale, as a tone at full level that is quieter hasn't come through, and the most is just below full scale. Without
// a tone the least is less than the noise of any living microphone, and there is no most.
Limits LimitsInForce(const Limits& limits, bool tonePlays);

// Sets the limits that a JSON object in UTF-8 names, and leaves the others. `source` names the text in messages. Throws
// Failure for a text that isn't JSON, a key that there isn't, a value out of its range, or a key that stands there twice.
void ReadLimits(const std::string& json, const std::string& source, Limits& limits);

}  // namespace host
