#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>

namespace host {

// What the figures of a record test must lie within to pass. docs/verdict.md has the measurements behind the defaults.
struct Limits {
  // The module's own figure: the largest absolute sample, full scale 1.0. LimitsInForce has the defaults.
  std::optional<double> minPeak, maxPeak;

  // "Good" paths are those of docs/verdict.md, which says more of each. Good ones are above 0.98, and below this the analysis
  // itself hears no tone.
  double minExplainedShare = 0.75;
  // 10 dB below the worst good path. At 12 dB a loud gap of 5 ms is still found.
  double minSignalToNoiseDb = 10.0;
  // A choice: good paths are below 0.001, and a twentieth is where room for the sound is lost.
  double maxDcOffset = 0.05;
  // A choice with room for small loudspeakers: good paths, of 8 bits too, are below -25.
  double maxHarmonicsDb = -12.0;
  // Good paths are below 0.003; with 2 % of the samples clipped this is passed.
  double maxFlatShare = 0.01;
  // A choice with room for compressors: good paths are below 0.2.
  double maxPeakCompressionDb = 2.0;
  double maxInterruptions = 0.0;
  // Good paths are below 0.08: the tone's first and last 70 ms are too quiet to be heard in noise.
  double maxLostSeconds = 0.1;
  // Good paths are below 0.003; 0.2 must be found.
  double maxSpeedErrorPercent = 0.15;
  // A choice: more than two working microphones of one device differ by.
  double maxChannelDifferenceDb = 40.0;
  double maxInvertedChannels = 0.0;
};

// Every limit by its key, in the order above; null for a peak without one.
void to_json(nlohmann::ordered_json& json, const Limits& limits);

// The limits in force for a test: those given, and for a peak without one the default. With a tone the least is a hundredth
// of full scale, as a tone at full level that is quieter hasn't come through, and the most is just below full scale. Without
// a tone the least is less than the noise of any living microphone, and there is no most.
Limits LimitsInForce(const Limits& limits, bool tonePlays);

// Sets the limits that a JSON object in UTF-8 names, and leaves the others. `source` names the text in messages. Throws
// Failure for a text that isn't JSON, a key that there isn't, a value out of its range, or a key that stands there twice.
void ReadLimits(const std::string& json, const std::string& source, Limits& limits);

}  // namespace host
