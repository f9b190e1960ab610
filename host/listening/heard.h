#pragma once

#include <rapidjson/document.h>

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace host {

// What was heard on one channel of an endpoint, boiled down for a drawing. Amplitudes are on a scale where full scale
// is 1.0.
struct Heard {
  double rate = 0.0;     // Hz
  double seconds = 0.0;  // how long was listened
  double peak = 0.0;     // largest absolute sample
  double rms = 0.0;      // of the whole, pauses included
  // The RMS of what is there between tones and clicks, taken for white: from the median over time of the power in each
  // frequency, and from the median of these.
  double noiseFloor = 0.0;
  double dominantHz = 0.0;           // where the spectrum is highest, above kLowestHz; 0 when it is empty
  std::size_t fullScaleSamples = 0;  // more than a few mean that the sound was clipped

  std::vector<std::pair<float, float>> envelope;  // least and largest sample of each of equal slices of time
  // In dBFS, a sine of full scale being 0. The bands divide kLowestHz to highestHz evenly by the logarithm.
  std::vector<float> spectrum;
  double highestHz = 0.0;

  static constexpr double kLowestHz = 20.0;
  // Nothing is quieter than this in the spectrum, in dBFS.
  static constexpr float kLowestLevel = -160.0F;
};

// Boils down the samples of one channel, at `rate` Hz. Nothing when they are too few for a spectrum, a twelfth of a
// second or so, or the rate is below 100 Hz.
std::optional<Heard> Analyse(std::span<const float> samples, double rate);

// A JSON object with the members of Heard by their names; the envelope is a list of pairs. Figures are rounded: to six
// digits, in the spectrum to a tenth of a dB.
std::string HeardJson(const Heard& heard);

// What HeardJson wrote; nothing for any other value.
std::optional<Heard> ReadHeard(const rapidjson::Value& value);

}  // namespace host
