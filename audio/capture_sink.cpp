#include "audio/capture_sink.h"

#include <cstddef>
#include <span>

#include "audio/outcome_codes.h"

namespace audio {
namespace {

constexpr std::uint32_t kStoreBytes = 2000000;

// The number of bits up to the sign of a sample. Valid bits that are more than 4 below the bits of the container
// aren't believed: the two bytes hold something else in a format that isn't extensible. The unsigned subtraction wraps
// for fewer than 4 bits, where `bits` is the answer too.
std::uint32_t SignWidth(std::uint32_t bits, std::uint32_t validBits) {
  return validBits >= bits - 4 ? validBits : bits;
}

}  // namespace

CaptureSinkClass::CaptureSinkClass() {
  if (!buffer_.Allocate(kStoreBytes)) throw kNoMemoryForSink;
}

void CaptureSinkClass::AppendFrames(const std::uint8_t* data, std::uint32_t frames) {
  const std::uint64_t bytes = std::uint64_t{format_.header.nBlockAlign} * frames;
  if (bytes > kStoreBytes) throw kSinkWriteFailed;
  if (!buffer_.Write(data, static_cast<std::uint32_t>(bytes))) throw kSinkWriteFailed;
}

std::vector<std::int32_t> CaptureSinkClass::DecodeSamples() const {
  const std::uint32_t bits = format_.header.wBitsPerSample;
  if (bits == 0 || bits > 32) throw kPlatformError;
  const std::uint32_t sampleBytes = (bits + 7) / 8;
  const std::uint32_t width = SignWidth(bits, format_.validBits());
  const std::uint32_t signShift = (width - 1) % 32;
  const std::uint32_t extension = width < 32 ? ~std::uint32_t{0} << width : 0;

  const std::span<const std::uint8_t> stored = buffer_.Written();
  std::vector<std::int32_t> samples;
  samples.reserve(stored.size() / sampleBytes);
  for (std::size_t start = 0; stored.size() - start >= sampleBytes; start += sampleBytes) {
    std::uint32_t value = 0;
    for (std::uint32_t j = 0; j < sampleBytes; ++j) value |= std::uint32_t{stored[start + j]} << (8 * j);
    // A sample is negative if any bit from the sign upwards is set, not the sign alone.
    const std::int32_t fromSign = static_cast<std::int32_t>(value) >> signShift;
    samples.push_back(static_cast<std::int32_t>(fromSign != 0 ? value | extension : value));
  }
  return samples;
}

std::vector<double> CaptureSinkClass::NormalizedSamples() const {
  const std::vector<std::int32_t> decoded = DecodeSamples();
  const auto scale = static_cast<double>(std::int64_t{1} << (format_.header.wBitsPerSample - 1));
  std::vector<double> samples;
  samples.reserve(decoded.size());
  for (const std::int32_t sample : decoded) samples.push_back(sample / scale);
  return samples;
}

}  // namespace audio
