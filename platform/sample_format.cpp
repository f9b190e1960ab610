#include "platform/sample_format.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace platform {

namespace {

constexpr WORD kExtensionBytes = sizeof(WAVEFORMATEXTENSIBLE) - sizeof(WAVEFORMATEX);

bool IsWhole(const SampleFormat& format) {
  const bool hasBits =
      format.isFloat ? format.bits == 32 : format.bits % 8 == 0 && format.bits >= 8 && format.bits <= 32;
  return hasBits && format.validBits >= 1 && format.validBits <= format.bits &&
         (!format.isFloat || format.validBits == 32) && format.channels >= 1 &&
         format.channels <= SampleFormat::kMostChannels && format.rate >= SampleFormat::kLowestRate &&
         format.rate <= SampleFormat::kHighestRate;
}

}  // namespace

std::optional<SampleFormat> SampleFormat::From(const WAVEFORMATEX& wave) {
  SampleFormat format{.tag = wave.wFormatTag,
                      .channels = wave.nChannels,
                      .rate = wave.nSamplesPerSec,
                      .bits = wave.wBitsPerSample,
                      .validBits = wave.wBitsPerSample,
                      .isFloat = wave.wFormatTag == WAVE_FORMAT_IEEE_FLOAT};
  if (wave.wFormatTag == WAVE_FORMAT_EXTENSIBLE) {
    if (wave.cbSize < kExtensionBytes) return std::nullopt;
    WAVEFORMATEXTENSIBLE extensible;
    std::memcpy(&extensible, &wave, sizeof extensible);
    format.validBits = extensible.Samples.wValidBitsPerSample;
    format.channelMask = extensible.dwChannelMask;
    const GUID subFormat = extensible.SubFormat;
    format.isFloat = subFormat == KSDATAFORMAT_SUBTYPE_IEEE_FLOAT;
    if (!format.isFloat && !(subFormat == KSDATAFORMAT_SUBTYPE_PCM)) return std::nullopt;
  } else if (wave.wFormatTag != WAVE_FORMAT_PCM && !format.isFloat) {
    return std::nullopt;
  }
  if (!IsWhole(format) || wave.nBlockAlign != format.FrameBytes()) return std::nullopt;
  return format;
}

WAVEFORMATEXTENSIBLE SampleFormat::ToWaveFormat() const {
  WAVEFORMATEXTENSIBLE wave;
  std::memset(&wave, 0, sizeof wave);
  wave.Format.wFormatTag = tag;
  wave.Format.nChannels = channels;
  wave.Format.nSamplesPerSec = rate;
  wave.Format.nAvgBytesPerSec = rate * FrameBytes();
  wave.Format.nBlockAlign = FrameBytes();
  wave.Format.wBitsPerSample = bits;
  if (tag == WAVE_FORMAT_EXTENSIBLE) {
    wave.Format.cbSize = kExtensionBytes;
    wave.Samples.wValidBitsPerSample = validBits;
    wave.dwChannelMask = channelMask;
    wave.SubFormat = isFloat ? KSDATAFORMAT_SUBTYPE_IEEE_FLOAT : KSDATAFORMAT_SUBTYPE_PCM;
  }
  return wave;
}

double SampleFormat::Read(const BYTE* bytes) const {
  if (isFloat) {
    float value;
    std::memcpy(&value, bytes, sizeof value);
    return std::isfinite(value) ? value : 0.0;
  }
  if (bits == 8) return (bytes[0] - 128) / 128.0;
  // Put together at the top of the word, where the sign falls into place for every width.
  std::uint32_t word = 0;
  for (int i = 0; i < SampleBytes(); ++i) word |= static_cast<std::uint32_t>(bytes[i]) << (32 - bits + 8 * i);
  return static_cast<std::int32_t>(word) / 2147483648.0;
}

void SampleFormat::Write(double value, BYTE* bytes) const {
  if (isFloat) {
    const auto single = static_cast<float>(value);
    std::memcpy(bytes, &single, sizeof single);
    return;
  }
  const auto fullScale = static_cast<double>(std::int64_t{1} << (validBits - 1));
  const double clipped = std::clamp(std::round(value * fullScale), -fullScale, fullScale - 1);
  auto word = static_cast<std::uint32_t>(static_cast<std::int64_t>(clipped)) << (bits - validBits);
  if (bits == 8) word += 128;
  for (int i = 0; i < SampleBytes(); ++i) bytes[i] = static_cast<BYTE>(word >> (8 * i));
}

}  // namespace platform
