#include "audio/tone_source.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <span>

#include "audio/outcome_codes.h"

namespace audio {
namespace {

// The framework defines the tone with this value in single precision. A closer one would give other samples.
constexpr float kTwoPi = 6.28318F;
// The partials are 5 Hz apart, the lowest 15 Hz below the centre and the highest 15 Hz above it.
constexpr std::uint32_t kPartials = 7;
constexpr double kHalfWidth = 15.0;  // Hz
constexpr double kStep = 5.0;        // Hz
// The amplitude if all partials peaked together, which leaves some room below 32767.
constexpr double kScale = 30000.0;

std::int32_t SampleAt(std::uint32_t i, double centre, double omega) {
  double sum = 0.0;
  double sign = -1.0;
  for (std::uint32_t partial = 0; partial < kPartials; ++partial) {
    const double frequency = centre - kHalfWidth + partial * kStep;
    sum += std::sin(i * frequency * omega) * sign;
    sign = -sign;
  }
  return static_cast<std::int32_t>(sum / kPartials * kScale);
}

std::uint32_t DrawFrequency(std::int32_t low, std::int32_t high) {
  std::mt19937 generator(std::random_device{}());
  return static_cast<std::uint32_t>(DrawUniform(generator, low, high));
}

}  // namespace

ToneSourceClass::ToneSourceClass(std::int32_t low, std::int32_t high) : frequency_(DrawFrequency(low, high)) {}

void ToneSourceClass::SetFormat(const RenderFormatBlock& block) {
  format_ = block.header;
  configured_ = true;
}

void ToneSourceClass::Synthesize() {
  if (!configured_) throw kNotSetUp;
  // Without memory there is no store, no sample is stored, and the tone stays empty.
  samples_.Allocate(format_.nAvgBytesPerSec);

  // The division is in single precision, and the samples depend on its rounding.
  const float omega = kTwoPi / static_cast<float>(format_.nSamplesPerSec);

  bool stored = true;
  for (std::uint32_t i = 0; stored; ++i) {
    const std::int32_t sample = SampleAt(i, frequency_, static_cast<double>(omega));
    const std::uint8_t bytes[] = {static_cast<std::uint8_t>(sample), static_cast<std::uint8_t>(sample >> 8)};
    stored = samples_.Write(bytes, sizeof bytes);
  }
}

std::uint32_t ToneSourceClass::FillRenderBuffer(std::uint32_t frames, std::uint8_t* destination) {
  const std::uint32_t frameBytes = format_.nBlockAlign;
  if (frameBytes == 0) return 0;
  const std::uint64_t wanted = std::uint64_t{frameBytes} * frames;
  const std::span<const std::uint8_t> tone = samples_.Written();
  const auto bytes = static_cast<std::uint32_t>(std::min<std::uint64_t>(wanted, tone.size()));
  std::copy_n(tone.begin(), bytes, destination);
  return bytes / frameBytes;
}

}  // namespace audio
