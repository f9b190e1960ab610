#pragma once

#include <complex>
#include <cstddef>
#include <span>
#include <vector>

#include "host/analysis/tone_fit.h"

namespace host {

// What is heard when: for each value of a baseband the tone with one of some delays, silence, or something else.
struct ToneTimeline {
  static constexpr std::size_t kSilence = 1000;
  static constexpr std::size_t kOther = 1001;
  static bool IsTone(std::size_t state) { return state < kSilence; }

  std::vector<double> delays;                              // seconds; the first is 0
  std::vector<std::size_t> states;                         // a place in `delays`, kSilence or kOther
  std::vector<std::vector<std::complex<double>>> expected;  // the tone by delay and value, with its gain

  // The values from which and up to which the tone is heard; equal when it isn't.
  std::size_t first = 0;
  std::size_t last = 0;
};

// The likeliest course of things, found by Viterbi's algorithm (G. D. Forney, "The Viterbi algorithm", 1973): each value
// costs its squared distance from what its state expects, in units of `noisePower` (a mean square of complex values),
// and each change of state costs something too. Delays are found where the tone as it is doesn't explain what is heard.
ToneTimeline TraceTone(const Baseband& baseband, const FittedTone& tone, std::span<const double> gains,
                       double noisePower);

}  // namespace host
