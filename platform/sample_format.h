#pragma once

#include <optional>

#include "platform/core_audio.h"

namespace platform {

// An uncompressed wave format: integer PCM of 8 (unsigned), 16, 24 or 32 bits, or 32-bit float, little-endian and
// interleaved. Published layouts: WAVEFORMATEX and WAVEFORMATEXTENSIBLE.
struct SampleFormat {
  WORD tag = WAVE_FORMAT_PCM;
  WORD channels = 2;
  DWORD rate = 48000;     // frames per second
  WORD bits = 16;         // of the container of one sample
  WORD validBits = 16;    // of these, from the top; the others are zero
  DWORD channelMask = 0;  // only written, never compared: it doesn't change how samples are read
  bool isFloat = false;

  static constexpr DWORD kLowestRate = 1000, kHighestRate = 384000;
  static constexpr WORD kMostChannels = 32;

  // What `format` describes, or nothing when it isn't a format of this kind or contradicts itself. Reads the published
  // 18 bytes and, for an extensible format, 22 more.
  static std::optional<SampleFormat> From(const WAVEFORMATEX& format);

  // The published image of this format, of which the first `18 + cbSize` bytes count.
  WAVEFORMATEXTENSIBLE ToWaveFormat() const;

  WORD SampleBytes() const { return static_cast<WORD>(bits / 8); }
  WORD FrameBytes() const { return static_cast<WORD>(channels * SampleBytes()); }

  // Every byte of silence.
  BYTE SilentByte() const { return bits == 8 ? 128 : 0; }

  // The sample at `bytes`, full scale being 1.0. A float that is no number is silence.
  double Read(const BYTE* bytes) const;
  // Writes the nearest sample; an integer one is clipped to full scale.
  void Write(double value, BYTE* bytes) const;

  friend bool operator==(const SampleFormat& one, const SampleFormat& other) {
    return one.tag == other.tag && one.channels == other.channels && one.rate == other.rate && one.bits == other.bits &&
           one.validBits == other.validBits && one.isFloat == other.isFloat;
  }
};

}  // namespace platform
