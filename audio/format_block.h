// A wave format as the byte image that the platform takes and gives.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace audio {

// The first `Size` bytes of a little-endian WAVEFORMATEX or WAVEFORMATEXTENSIBLE, whose published layout and field
// names these are. It is copied as a whole, and read by field; bytes that a shorter format doesn't fill are 0.
template <std::size_t Size>
struct FormatBlock {
  static_assert(Size >= 18, "holds at least a WAVEFORMATEX");

  std::array<std::uint8_t, Size> bytes{};

  constexpr std::uint16_t wFormatTag() const { return Word(0); }
  constexpr std::uint16_t nChannels() const { return Word(2); }
  constexpr std::uint32_t nSamplesPerSec() const { return DoubleWord(4); }  // frames per second
  constexpr std::uint32_t nAvgBytesPerSec() const { return DoubleWord(8); }
  constexpr std::uint16_t nBlockAlign() const { return Word(12); }  // bytes per frame
  constexpr std::uint16_t wBitsPerSample() const { return Word(14); }
  constexpr std::uint16_t cbSize() const { return Word(16); }  // bytes that follow this field
  // wValidBitsPerSample of a WAVEFORMATEXTENSIBLE; whatever follows cbSize in any other format.
  constexpr std::uint16_t validBits() const requires(Size >= 20) { return Word(18); }

  friend constexpr bool operator==(const FormatBlock&, const FormatBlock&) = default;

 private:
  constexpr std::uint16_t Word(std::size_t offset) const {
    return static_cast<std::uint16_t>(bytes[offset] | bytes[offset + 1] << 8);
  }
  constexpr std::uint32_t DoubleWord(std::size_t offset) const {
    return Word(offset) | static_cast<std::uint32_t>(Word(offset + 2)) << 16;
  }
};

using RenderFormatBlock = FormatBlock<20>;
using CaptureFormatBlock = FormatBlock<42>;

// The one format in which the tests render: PCM, mono, 44100 Hz, 16 bits.
inline constexpr RenderFormatBlock FixedTestFormat = {
    .bytes = {1, 0, 1, 0, 0x44, 0xAC, 0, 0, 0x88, 0x58, 1, 0, 2, 0, 16, 0, 0, 0, 0, 0}};

}  // namespace audio
