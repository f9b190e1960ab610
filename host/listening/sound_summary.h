#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <tuple>
#include <utility>
#include <vector>

#include "host/base/member.h"

namespace host {

// What was heard on one channel of an endpoint, boiled down for a drawing. Amplitudes are on a scale where full scale
// is 1.0. Figures are rounded to six digits, the envelope to four, the spectrum to a tenth of a dB.
struct SoundSummary {
  double rate = 0.0;     // Hz
  double seconds = 0.0;  // how long was listened
  double peak = 0.0;     // largest absolute sample
  double rms = 0.0;      // of the whole, pauses included
  // The RMS of what is there between tones and clicks, taken for white: from the median over time of the power in each
  // frequency, and from the median of these.
  double noiseFloor = 0.0;
  double dominantHz = 0.0;           // where the spectrum is highest, above kLowestHz; 0 when it is empty
  std::size_t fullScaleSamples = 0;  // more than a few mean that the sound was clipped
  double highestHz = 0.0;            // where the spectrum ends

  std::vector<std::pair<double, double>> envelope;  // least and largest sample of each of equal slices of time
  // In dBFS, a sine of full scale being 0. The bands divide kLowestHz to highestHz evenly by the logarithm.
  std::vector<double> spectrum;

  static constexpr double kLowestHz = 20.0;
  // Nothing is quieter than this in the spectrum, in dBFS.
  static constexpr double kLowestLevel = -160.0;

  static constexpr auto Members() {
    using S = SoundSummary;
    return std::tuple(Member("rateHz", &S::rate), Member("seconds", &S::seconds), Member("peak", &S::peak),
                      Member("rms", &S::rms), Member("noiseFloor", &S::noiseFloor),
                      Member("dominantHz", &S::dominantHz), Member("fullScaleSamples", &S::fullScaleSamples),
                      Member("highestHz", &S::highestHz), Member("envelope", &S::envelope),
                      Member("spectrumDb", &S::spectrum));
  }
};

// Boils down the samples of one channel, at `rate` Hz. Nothing when they are too few for a spectrum, a twelfth of a
// second or so, or the rate is below 100 Hz.
std::optional<SoundSummary> Summarise(std::span<const float> samples, double rate);

}  // namespace host
