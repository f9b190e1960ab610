#include "host/listening/listener_format.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace host {

std::optional<ListenerFormat> ListenerFormat::From(std::span<const BYTE> waveFormat) {
  WAVEFORMATEX header;
  if (waveFormat.size() < sizeof header) return std::nullopt;
  std::memcpy(&header, waveFormat.data(), sizeof header);
  std::uint32_t tag = header.wFormatTag;
  if (tag == WAVE_FORMAT_EXTENSIBLE) {
    // The GUID of the sub-format begins with the tag that it stands for.
    constexpr std::size_t kSubFormatOffset = 24;
    if (waveFormat.size() < kSubFormatOffset + sizeof tag) return std::nullopt;
    std::memcpy(&tag, waveFormat.data() + kSubFormatOffset, sizeof tag);
  }
  const ListenerFormat format{.channels = header.nChannels,
                              .rate = static_cast<double>(header.nSamplesPerSec),
                              .sampleBytes = header.wBitsPerSample / std::size_t{8},
                              .isFloat = tag == WAVE_FORMAT_IEEE_FLOAT};
  const bool isInteger = tag == WAVE_FORMAT_PCM && format.sampleBytes >= 1 && format.sampleBytes <= 4;
  if (!isInteger && !(format.isFloat && format.sampleBytes == 4)) return std::nullopt;
  if (format.channels == 0 || header.nBlockAlign != format.FrameBytes()) return std::nullopt;
  return format;
}

float ListenerFormat::Read(const BYTE* bytes) const {
  // At the top of 32 bits the sign is in its place, whatever the size.
  std::uint32_t bits = 0;
  for (std::size_t i = 0; i < sampleBytes; ++i) bits |= std::uint32_t{bytes[i]} << (8 * (4 - sampleBytes + i));
  if (isFloat) {
    const auto value = std::bit_cast<float>(bits);
    return std::isfinite(value) ? value : 0.0F;
  }
  if (sampleBytes == 1) bits ^= 0x80000000U;
  return static_cast<float>(static_cast<std::int32_t>(bits)) * 0x1p-31F;
}

}  // namespace host
