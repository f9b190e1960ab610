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

  std::vector<double> delays;                               // seconds; the first is 0
  std::vector<std::size_t> states;                          // a place in `delays`, kSilence or kOther
  std::vector<std::vector<std::complex<double>>> expected;  // the tone by delay and value, with its gain

  // The values from which and up to which the tone is heard; equal when it isn't. The time in which an echo isn't steady
  // yet is part of it.
  std::size_t first = 0;
  std::size_t last = 0;
};

// The likeliest course of things, found by Viterbi's algorithm (G. D. Forney, "The Viterbi algorithm", 1973): each value
// costs its squared distance from what its state expects, in units of what the fit misses there on an undisturbed path
// (`missed`, a mean square by value), and each change of state costs something too. Other delays are tried on what the tone
// as it is doesn't explain.
ToneTimeline TraceTone(const Baseband& baseband, const FittedTone& tone, std::span<const double> gains,
                       std::span<const double> missed);

}  // namespace host
