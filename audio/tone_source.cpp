#include "audio/tone_source.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <span>

#include "audio/outcome_codes.h"

namespace audio {
namespace {

// The tone is defined with this single-precision constant; the closer value would give other samples.
constexpr float kTwoPi = 6.28318F;
constexpr double kHalfWidth = 15.0;  // Hz
constexpr double kStep = 5.0;        // Hz
// Of 32767: even where all partials peak together, the tone stays below full scale.
constexpr double kScale = 30000.0;

struct Band {
  double centre;  // Hz
  double weight;
  std::uint32_t index;  // where the partials' sequence of signs starts
};

std::int32_t SampleAt(std::uint32_t i, double omega, std::span<const Band> bands) {
  double sum = 0.0;
  std::uint32_t count = 0;
  for (const Band& band : bands) {
    std::uint32_t n = band.index;
    for (double f = band.centre - kHalfWidth; f <= band.centre + kHalfWidth; f += kStep) {
      const double angle = i * f * omega;
      const double sign = n % 2 == 1 ? 1.0 : -1.0;
      sum += std::sin(angle) * band.weight * sign;
      ++n;
    }
    count += n;
  }
  return static_cast<std::int32_t>(sum / count * kScale);
}

std::uint32_t DrawFrequency(std::int32_t low, std::int32_t high) {
  std::mt19937 generator(std::random_device{}());
  return static_cast<std::uint32_t>(DrawUniform(generator, low, high));
}

}  // namespace

ToneSourceClass::ToneSourceClass(std::int32_t low, std::int32_t high) : frequency_(DrawFrequency(low, high)) {}

void ToneSourceClass::SetFormat(const RenderFormatBlock& block) {
  std::copy_n(block.bytes.begin(), format_.bytes.size(), format_.bytes.begin());
  configured_ = true;
}

void ToneSourceClass::Synthesize() {
  if (!configured_) throw kNotSetUp;
  // A store that could not be allocated takes no sample, which leaves the tone empty.
  samples_.Allocate(format_.nAvgBytesPerSec());

  // Divided in single precision and widened afterwards: the samples depend on this rounding.
  const float omega = kTwoPi / static_cast<float>(format_.nSamplesPerSec());
  const Band bands[] = {{static_cast<double>(frequency_), 1.0, 0}};

  bool stored = true;
  for (std::uint32_t i = 0; stored; ++i) {
    const std::int32_t sample = SampleAt(i, static_cast<double>(omega), bands);
    const std::uint8_t bytes[] = {static_cast<std::uint8_t>(sample), static_cast<std::uint8_t>(sample >> 8)};
    stored = samples_.Write(bytes, sizeof bytes);
  }
}

std::uint32_t ToneSourceClass::FillRenderBuffer(std::uint32_t frames, std::uint8_t* destination) {
  const std::uint32_t frameBytes = format_.nBlockAlign();
  if (frameBytes == 0) return 0;
  const std::uint64_t wanted = std::uint64_t{frameBytes} * frames;
  const auto bytes = static_cast<std::uint32_t>(std::min<std::uint64_t>(wanted, samples_.Used()));
  samples_.SeekRead(0);
  std::generate_n(destination, bytes, [this] { return samples_.ReadByte(); });
  return bytes / frameBytes;
}

}  // namespace audio
