#pragma once

#include <span>
#include <vector>

#include "host/analysis/tone_timeline.h"

namespace host {

// The tone in a stretch of one channel, as the other findings need it.
struct ToneSearch {
  bool heard = false;
  double speed = 1.0;
  Baseband baseband;
  FittedTone tone;
  std::vector<double> gains;   // by value of the baseband, how loud the tone is against `tone`
  std::vector<double> missed;  // by value, what the fit misses there on an undisturbed path, as a mean square
  ToneTimeline timeline;
  double step = 0.0;  // the least difference between two neighbouring samples, as of the format; 0 without any
  double explainedShare = 0.0;  // of the energy within 200 Hz of the tone while it lasts
};

// Looks for the tone in samples without an offset. It counts as heard when at least 0.3 s of it explain half of what is
// heard around its frequency, with more than two partials: one or two are another tone.
ToneSearch FindTone(std::span<const double> samples, double rate);

}  // namespace host
