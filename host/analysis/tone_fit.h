#pragma once

#include <array>
#include <complex>
#include <span>
#include <vector>

#include "host/analysis/baseband.h"
#include "host/analysis/tone.h"

namespace host {

// The tone as a linear path leaves it: each partial with an amplitude and a phase of its own, whatever gain, polarity,
// delay, echo and frequency response make of them.
struct FittedTone {
  std::array<std::complex<double>, kPartials> partials{};

  // The complex envelope at each value of a baseband, when the tone comes `delaySeconds` late.
  std::vector<std::complex<double>> Envelope(const Baseband& baseband, double delaySeconds = 0.0) const;

  // When the tone begins, from 0 to 0.2 s, as the envelope repeats: from the delay that brings the partials nearest to
  // those that are generated.
  double BeginSeconds() const;

  // How near they then are, from 0 to 1: the share of the partials' power in the generated pattern. One steady sine has a
  // seventh, three of any phases at most three.
  double PatternMatch() const;

  // How many partials the power is in: n when n of them share it evenly (the inverse Simpson index).
  double EffectivePartials() const;

  double Power() const;  // mean square of the sound
};

// What to fit to: the values that have a weight, in which the tone is scaled value by value by `gains`.
struct FitInput {
  const Baseband& baseband;
  std::span<const double> weights;
  std::span<const double> gains;
};

// Least squares of sinusoids with known frequencies, after IEEE Std 1057, 4.1.4.
FittedTone FitTone(const FitInput& input);

// By how much, as a share, the tone runs faster than the baseband was tuned for: the standard's four-parameter fit with one
// frequency for all partials, of which this is one step of Gauss and Newton from `tone`, which was fitted to the same.
double SpeedCorrection(const FitInput& input, const FittedTone& tone);

// The fit to that quarter of a second which explains the whole best, gaps, jumps and other sounds being outliers. The
// method is that of random sample consensus (M. Fischler and R. Bolles, 1981), with all stretches tried in turn instead
// of drawn.
struct ToneConsensus {
  FittedTone tone;
  double explained = 0.0;         // how well it explains the whole, to be compared with other fits to the same sound
  double unexplainedShare = 1.0;  // of the energy in the quarter of a second itself
};
ToneConsensus FindConsensus(const Baseband& baseband);

// A weight for each value: 1 in blocks of 50 ms in which the tone leaves less than this share of the energy unexplained,
// else 0; and 1 for all when there is no such block.
std::vector<double> ExplainedBlocks(const Baseband& baseband, const FittedTone& tone, double unexplainedShare);

}  // namespace host
