#pragma once

#include <cstddef>
#include <optional>
#include <span>

#include "platform/core_audio.h"

namespace host {

// How captured samples lie in memory: interleaved and little-endian, integers of 8 (unsigned), 16, 24 or 32 bits, or
// floats of 32. An integer with fewer valid bits stands at the top of its container, as published for
// WAVEFORMATEXTENSIBLE.
struct ListenerFormat {
  std::size_t channels = 0;
  double rate = 0.0;            // frames per second
  std::size_t sampleBytes = 0;  // of one channel
  bool isFloat = false;

  // What a wave format in memory describes: WAVEFORMATEX, with its extension when it has one. Nothing when that isn't
  // as above.
  static std::optional<ListenerFormat> From(std::span<const BYTE> waveFormat);

  std::size_t FrameBytes() const { return channels * sampleBytes; }

  // The sample at `bytes`, full scale 1.0. A float that isn't finite is silence.
  float Read(const BYTE* bytes) const;
};

}  // namespace host
