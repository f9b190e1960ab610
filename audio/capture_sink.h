#pragma once

#include <cstdint>
#include <vector>

#include "audio/format_block.h"
#include "audio/sample_buffer.h"

namespace audio {

// Holds what a capture stream delivered, and turns it into numbers. The channels' samples stay interleaved, in the
// order of capture. Every format is read as little-endian integer PCM, whatever its tag says.
class CaptureSinkClass {
 public:
  // Makes room for 2000000 bytes, which is all the sink ever takes: a bit over five seconds of 48 kHz stereo in 32
  // bits. Throws kNoMemoryForSink.
  CaptureSinkClass();

  void SetFormat(const CaptureFormatBlock& block) { format_ = block; }

  // Stores a packet of `frames` frames of nBlockAlign bytes each. Throws kSinkWriteFailed, with nothing stored, if the
  // packet doesn't fit whole or `data` is null.
  void AppendFrames(const std::uint8_t* data, std::uint32_t frames);

  // One signed value per whole sample stored; the bytes of a sample that isn't whole are passed over. Throws
  // kPlatformError if the format's samples have no bits, or more than 32.
  std::vector<std::int32_t> DecodeSamples() const;

  // The same samples divided by 2^(wBitsPerSample - 1), so that full scale is 1.0. Not limited to that. Throws like
  // DecodeSamples.
  std::vector<double> NormalizedSamples() const;

 private:
  SampleBufferClass buffer_;
  CaptureFormatBlock format_;
};

}  // namespace audio
