#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "audio/format_block.h"
#include "audio/sample_buffer.h"

namespace audio {

// Holds what a capture stream delivered, and turns it into numbers. The samples of the channels stay interleaved, in
// the order of capture. Every format is read as signed little-endian integer PCM, whatever its tag says. So float
// samples are taken for integers, and an endpoint of 8 bits, whose samples are unsigned, measures full scale even in
// silence, which is 128 there.
class CaptureSinkClass {
 public:
  // Makes room for 2000000 bytes, a bit over five seconds of 48 kHz stereo in 32 bits. The sink never takes more.
  // Throws kNoMemoryForSink if there is no memory.
  CaptureSinkClass();

  void SetFormat(const CaptureFormatBlock& block) { format_ = block; }

  // Stores a packet of `frames` frames of nBlockAlign bytes each. If the packet doesn't fit whole or `data` is null,
  // throws kSinkWriteFailed and stores nothing.
  void AppendFrames(const std::uint8_t* data, std::uint32_t frames);

  // One signed value for each whole sample; the bytes of an incomplete last sample are ignored. Throws kPlatformError
  // if the format's samples have no bits, or more than 32.
  std::vector<std::int32_t> DecodeSamples() const;

  // The same samples divided by 2^(wBitsPerSample - 1), so that full scale is 1.0. They aren't limited to full scale.
  // Throws like DecodeSamples.
  std::vector<double> NormalizedSamples() const;

 private:
  // What `valueOf` makes of each sample. Throws like DecodeSamples.
  template <class Value, class ValueOf>
  std::vector<Value> Decode(const ValueOf& valueOf) const;

  SampleBufferClass buffer_;
  CaptureFormatBlock format_;
};

// The largest absolute value; 0 if there is none.
double LargestMagnitude(std::span<const double> samples);

}  // namespace audio
