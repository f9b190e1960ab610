#include "audio/capture_sink.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <functional>

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

template <std::size_t count>
std::uint32_t LittleEndian(const std::uint8_t* bytes) {
  std::uint32_t value = 0;
  for (std::size_t j = 0; j < count; ++j) value |= std::uint32_t{bytes[j]} << (8 * j);
  return value;
}

// Stores what `convert` makes of each sample. The number of bytes is a constant, so that the compiler knows it too.
template <std::size_t sampleBytes, class Value, class Convert>
void DecodeInto(std::span<Value> samples, const std::uint8_t* bytes, const Convert& convert) {
  if constexpr (sampleBytes == 3) {
    // Read as four bytes, four samples are converted at once. Behind the last one there is no fourth byte.
    for (std::array<std::uint32_t, 4> values; samples.size() > values.size();
         samples = samples.subspan(values.size())) {
      for (std::uint32_t& value : values) {
        value = LittleEndian<4>(bytes) & 0xFFFFFF;
        bytes += sampleBytes;
      }
      std::ranges::transform(values, samples.begin(), convert);
    }
  }
  for (Value& sample : samples) {
    sample = convert(LittleEndian<sampleBytes>(bytes));
    bytes += sampleBytes;
  }
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

template <class Value, class ValueOf>
std::vector<Value> CaptureSinkClass::Decode(const ValueOf& valueOf) const {
  const std::uint32_t bits = format_.header.wBitsPerSample;
  if (bits == 0 || bits > 32) throw kPlatformError;
  const std::uint32_t sampleBytes = (bits + 7) / 8;
  const std::uint32_t width = SignWidth(bits, format_.validBits());
  const std::uint32_t signShift = (width - 1) % 32;
  const std::uint32_t extension = width < 32 ? ~std::uint32_t{0} << width : 0;
  const auto convert = [=](std::uint32_t value) {
    // A sample is negative if any bit from the sign upwards is set, not the sign alone. There is no branch on it, as no
    // processor can foresee the sign of noise.
    const std::uint32_t isNegative = static_cast<std::int32_t>(value) >> signShift != 0;
    return valueOf(static_cast<std::int32_t>(value | (extension & (0 - isNegative))));
  };

  const std::span<const std::uint8_t> stored = buffer_.Written();
  std::vector<Value> samples(stored.size() / sampleBytes);
  switch (sampleBytes) {
    case 1: DecodeInto<1>(std::span(samples), stored.data(), convert); break;
    case 2: DecodeInto<2>(std::span(samples), stored.data(), convert); break;
    case 3: DecodeInto<3>(std::span(samples), stored.data(), convert); break;
    default: DecodeInto<4>(std::span(samples), stored.data(), convert);
  }
  return samples;
}

std::vector<std::int32_t> CaptureSinkClass::DecodeSamples() const { return Decode<std::int32_t>(std::identity()); }

std::vector<double> CaptureSinkClass::NormalizedSamples() const {
  // The scale is a power of two, so that its reciprocal is exact and a product is what the quotient would be.
  const double unit = std::ldexp(1.0, 1 - format_.header.wBitsPerSample);
  return Decode<double>([unit](std::int32_t sample) { return sample * unit; });
}

double LargestMagnitude(std::span<const double> samples) {
  // In lanes of their own, so that a comparison needn't wait for the one before.
  std::array<double, 8> largest{};
  std::size_t at = 0;
  for (; at + largest.size() <= samples.size(); at += largest.size()) {
    for (std::size_t lane = 0; lane < largest.size(); ++lane) {
      const double magnitude = std::abs(samples[at + lane]);
      largest[lane] = largest[lane] < magnitude ? magnitude : largest[lane];
    }
  }
  for (; at < samples.size(); ++at) largest[0] = std::max(largest[0], std::abs(samples[at]));
  return *std::ranges::max_element(largest);
}

}  // namespace audio
