#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/base/json.h"
#include "tools/measure_verdict/heard_tone.h"
#include "tools/measure_verdict/random.h"

namespace measure_verdict {

inline constexpr const char* kSpeakerId = "speaker";
inline constexpr const char* kMicrophoneId = "microphone";

// One way from a speaker to a microphone.
struct TestPath {
  double rate = 48000.0;
  int bits = 16;
  bool isFloat = false;  // the endpoint's own format; streams get one of `bits`
  int channels = 1;
  bool hearsSpeaker = true;
  double gain = 0.5;  // negative for the other polarity
  int delayMs = 0;
  std::vector<Echo> echoes = {};
  double lowpassHz = 0.0;  // 0 for none
  // The tone against white noise and the format's own rounding together. No noise is added where the rounding alone is
  // this loud.
  double signalToNoiseDb = 60.0;
  std::uint32_t seed = 1;
  host::Json conditions = host::Json::array();  // what else the path does, as a machine's description has it

  HeardTone Tone() const { return {gain, echoes}; }
  // Full scale 1.0.
  double NoiseRms() const;
  // The tone against the format's own rounding, as if that were white.
  double SignalToRoundingDb() const;
  // When the tone was heard to its end, or the recording ended; in ms from where the tone begins.
  double HeardMs() const { return 1000.0 - delayMs; }

  void Add(host::Json condition) { conditions.push_back(std::move(condition)); }
  // The virtual machine with this path.
  std::string Description() const;
};

// A path that nothing is wrong with: down to 20 dB of signal to noise, -36 to 0 dB, with up to 300 ms of delay, an echo
// and a low-pass down to 3.4 kHz. The tone's peak is between the default limits of the level.
TestPath DrawGoodPath(Random& random);

}  // namespace measure_verdict
