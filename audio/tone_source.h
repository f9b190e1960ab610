#pragma once

#include <cstdint>

#include "audio/format_block.h"
#include "audio/sample_buffer.h"

namespace audio {

// A number from `low` to `high`, both included, each equally likely; `low` isn't above `high`. `generator` gives 32
// random bits per call. The method is Lemire's ("Fast Random Integer Generation in an Interval", 2019), written out
// because the standard leaves that of std::uniform_int_distribution open.
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

// The test signal: a band of seven sine partials around a centre frequency, as signed 16-bit mono samples, as long as
// one second of the format that was set. It is computed whole, before any stream runs.
class ToneSourceClass {
 public:
  // `frequency` is the band's centre in Hz.
  explicit ToneSourceClass(std::uint32_t frequency) : frequency_(frequency) {}
  // Draws the centre from `low` to `high` Hz, both included, with a new seed for each object.
  ToneSourceClass(std::int32_t low, std::int32_t high);

  void SetFormat(const RenderFormatBlock& block);

  // Computes nAvgBytesPerSec bytes of samples at nSamplesPerSec, which is above 0; the other fields of the format have
  // no effect on them. Without memory for them the tone is empty. Throws kNotSetUp before SetFormat.
  void Synthesize();

  void Rewind() { samples_.SeekRead(0); }

  // Copies the tone from its start to `destination`, as much of it as `frames` frames hold. Returns the whole frames
  // written.
  std::uint32_t FillRenderBuffer(std::uint32_t frames, std::uint8_t* destination);

 private:
  FormatBlock<18> format_;
  bool configured_ = false;
  std::uint32_t frequency_;
  SampleBufferClass samples_;
};

}  // namespace audio
