#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "platform/core_audio.h"

namespace audio {

// The first `Size` bytes of a wave format: its header, which every format has, and what follows that in the memory of a
// WAVEFORMATEXTENSIBLE. It is handed to the platform and copied as it is, byte for byte. Bytes that a shorter format
// doesn't fill are 0.
//
// This isn't the platform's SampleFormat, which takes consistent formats only: the engine hands on what it got.
template <std::size_t Size>
struct FormatBlock {
  static_assert(Size >= sizeof(WAVEFORMATEX) + 2, "holds the valid bits");

  WAVEFORMATEX header{};
  std::array<std::uint8_t, Size - sizeof(WAVEFORMATEX)> tail{};

  // wValidBitsPerSample of a WAVEFORMATEXTENSIBLE, and the same two bytes whatever the format's tag is.
  constexpr std::uint16_t validBits() const { return static_cast<std::uint16_t>(tail[0] | tail[1] << 8); }
};

using RenderFormatBlock = FormatBlock<20>;
using CaptureFormatBlock = FormatBlock<42>;
// The header is packed, so neither it nor the block is padded.
static_assert(sizeof(RenderFormatBlock) == 20 && sizeof(CaptureFormatBlock) == 42);

// The one format in which the tests render: PCM, mono, 44100 Hz, 16 bits.
inline constexpr RenderFormatBlock FixedTestFormat = {.header = {.wFormatTag = WAVE_FORMAT_PCM,
                                                                 .nChannels = 1,
                                                                 .nSamplesPerSec = 44100,
                                                                 .nAvgBytesPerSec = 88200,
                                                                 .nBlockAlign = 2,
                                                                 .wBitsPerSample = 16,
                                                                 .cbSize = 0}};

}  // namespace audio
