#include "host/analysis/tone_synthesis.h"

#include <algorithm>
#include <cmath>

namespace host {
namespace {

// Half of the window through which the baseband sees the sound, and a little more.
constexpr double kMarginSeconds = 0.003;

void SynthesizeRun(const ToneSearch& search, double delaySeconds, std::size_t begin, std::size_t end,
                   std::vector<double>& samples) {
  const Baseband& baseband = search.baseband;
  std::array<std::complex<double>, kPartials> partials;
  std::array<std::complex<double>, kPartials> turns;
  for (std::size_t k = 0; k < kPartials; ++k) {
    const double hertz = kToneHz + PartialOffsetHz(k);
    const double cycles = hertz * (static_cast<double>(begin) / baseband.rate - delaySeconds);
    partials[k] =
        search.tone.partials[k] / BasebandResponse(baseband, PartialOffsetHz(k)) * Phasor(std::fmod(cycles, 1.0));
    turns[k] = Phasor(hertz / baseband.rate);
  }
  const double perSample = 1.0 / static_cast<double>(baseband.hop);
  for (std::size_t n = begin; n < end; ++n) {
    double sum = 0.0;
    for (std::size_t k = 0; k < kPartials; ++k) {
      sum += partials[k].real();
      partials[k] *= turns[k];
    }
    const std::size_t m = n / baseband.hop;
    const double within = static_cast<double>(n % baseband.hop) * perSample;
    const double next = search.gains[std::min(m + 1, search.gains.size() - 1)];
    samples[n] = sum * (search.gains[m] + within * (next - search.gains[m]));
  }
}

}  // namespace

SynthesizedTone SynthesizeTone(const ToneSearch& search, std::size_t count) {
  const Baseband& baseband = search.baseband;
  const std::vector<std::size_t>& states = search.timeline.states;
  const auto margin = static_cast<std::size_t>(std::ceil(kMarginSeconds * baseband.rate));
  SynthesizedTone synthesized{.samples = std::vector<double>(count), .undisturbed = std::vector<bool>(count)};
  for (std::size_t first = 0, last; first < states.size(); first = last) {
    last = first + 1;
    while (last < states.size() && states[last] == states[first]) ++last;
    if (!ToneTimeline::IsTone(states[first])) continue;
    // A value stands for the samples around it.
    const std::size_t begin = first * baseband.hop - std::min(first, std::size_t{1}) * (baseband.hop / 2);
    const std::size_t end = std::min(count, last * baseband.hop - baseband.hop / 2);
    if (begin >= end) continue;
    SynthesizeRun(search, search.timeline.delays[states[first]], begin, end, synthesized.samples);
    for (std::size_t n = begin + margin; n + margin < end; ++n) {
      synthesized.undisturbed[n] = true;
      ++synthesized.undisturbedSamples;
    }
  }
  return synthesized;
}

}  // namespace host
