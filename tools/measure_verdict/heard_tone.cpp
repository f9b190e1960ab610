#include "tools/measure_verdict/heard_tone.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "host/analysis/tone.h"

namespace measure_verdict {
namespace {

std::complex<double> Tone(double seconds) {
  if (seconds < 0.0 || seconds >= host::kToneSeconds) return 0.0;
  const std::complex<double> step = host::Phasor(host::kPartialStepHz * seconds);
  std::complex<double> partial = host::Phasor((host::kToneHz + host::PartialOffsetHz(0)) * seconds);
  std::complex<double> sum = 0.0;
  for (std::size_t k = 0; k < host::kPartials; ++k) {
    sum += (k % 2 == 1 ? 1.0 : -1.0) * partial;
    partial *= step;
  }
  return sum * (HeardTone::kAmplitude / static_cast<double>(host::kPartials));
}

}  // namespace

HeardTone::HeardTone(double gain, std::vector<Echo> echoes) : gain_(gain), echoes_(std::move(echoes)) {
  constexpr int kSteps = 2000;
  double power = 0.0;
  for (int i = 0; i < kSteps; ++i) {
    const double envelope = std::abs(At(host::kToneSeconds * i / kSteps));
    peak_ = std::max(peak_, envelope);
    power += 0.5 * envelope * envelope;
  }
  rms_ = std::sqrt(power / kSteps);
}

std::complex<double> HeardTone::At(double seconds) const {
  std::complex<double> sum = Tone(seconds);
  for (const Echo& echo : echoes_) sum += echo.gain * Tone(seconds - 0.001 * echo.delayMs);
  return gain_ * sum;
}

double HeardTone::PlainRms() {
  return kAmplitude / static_cast<double>(host::kPartials) * std::sqrt(static_cast<double>(host::kPartials) / 2.0);
}

}  // namespace measure_verdict
