#pragma once

#include <cstdint>

#include "audio/format_block.h"
#include "audio/sample_buffer.h"

namespace audio {

// A number from `low` to `high`, both included, each equally likely. `low` must not be above `high`, and each call of
// `generator` returns 32 random bits. The method is Lemire's ("Fast Random Integer Generation in an Interval", 2019).
// It is written out because the standard leaves the method of std::uniform_int_distribution open.
template <class Generator>
std::int32_t DrawUniform(Generator& generator, std::int32_t low, std::int32_t high) {
  const auto range = static_cast<std::uint64_t>(static_cast<std::int64_t>(high) - low + 1);
  const std::uint64_t rejectedBelow = (std::uint64_t{1} << 32) % range;
  std::uint64_t product;
  do {
    product = static_cast<std::uint32_t>(generator()) * range;
  } while (static_cast<std::uint32_t>(product) < rejectedBelow);
  return static_cast<std::int32_t>(low + static_cast<std::int64_t>(product >> 32));
}

// The test signal: a band of seven sine partials around a centre frequency, in signed 16-bit mono samples, as long as
// one second of the format that was set. All of it is computed before any stream runs.
class ToneSourceClass {
 public:
  // `frequency` is the band's centre in Hz.
  explicit ToneSourceClass(std::uint32_t frequency) : frequency_(frequency) {}
  // The centre is drawn at random from `low` to `high` Hz, both included.
  ToneSourceClass(std::int32_t low, std::int32_t high);

  void SetFormat(const RenderFormatBlock& block);

  // Computes nAvgBytesPerSec bytes of samples at nSamplesPerSec, which must be above 0; the other fields of the format
  // have no effect on them. The tone is empty if there is no memory for it. Throws kNotSetUp before SetFormat.
  void Synthesize();

  // Copies the tone from its start to `destination`, as much of it as fits into `frames` frames of nBlockAlign bytes.
  // Returns the number of whole frames written.
  std::uint32_t FillRenderBuffer(std::uint32_t frames, std::uint8_t* destination);

 private:
  WAVEFORMATEX format_{};
  bool configured_ = false;
  std::uint32_t frequency_;
  SampleBufferClass samples_;
};

}  // namespace audio
