#include <gtest/gtest.h>

#include <new>

#include "audio/capture_sink.h"
#include "audio/outcome_codes.h"
#include "audio/tone_source.h"
#include "tests/audio/outcome.h"

namespace {
bool refuseMemory = false;
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return refuseMemory ? nullptr : ::operator new[](size);
}

namespace audio {
namespace {

constexpr std::uint8_t kBytes[2000000] = {};

std::vector<int> Samples(ToneSourceClass tone) {
  tone.SetFormat(FixedTestFormat);
  tone.Synthesize();
  std::vector<std::uint8_t> bytes(2 * 66150);
  std::vector<int> samples(tone.FillRenderBuffer(66150, bytes.data()));
  for (std::size_t i = 0; i < samples.size(); ++i) {
    samples[i] = static_cast<std::int16_t>(bytes[2 * i] | bytes[2 * i + 1] << 8);
  }
  return samples;
}

// The C library's sine may differ in its last bit, which truncation turns into a difference of 1.
TEST(Tone, HasThePublishedSamples) {
  const std::pair<std::uint32_t, std::vector<int>> cases[] = {
      {1200, {0, -729, -1437, -2103, -2707, -3233, -3664, -3988}},
      {900, {0, -548, -1087, -1608, -2102, -2563, -2981, -3350}},
      {1100, {0, -668, -1321, -1941, -2514, -3024, -3461, -3813}}};
  for (const auto& [frequency, first] : cases) {
    const std::vector<int> samples = Samples(ToneSourceClass(frequency));
    ASSERT_EQ(samples.size(), 44100U);
    for (std::size_t i = 0; i < 8; ++i) EXPECT_NEAR(samples[i], first[i], 1) << frequency;
  }
  const std::vector<int> samples = Samples(ToneSourceClass(1200));
  EXPECT_NEAR(samples.back(), 756, 1) << "no fade";
  EXPECT_EQ(Samples(ToneSourceClass(1200, 1200)), samples);
  EXPECT_NEAR(samples[40407], -963, 1) << "with the angular step in double precision, -965";
}

TEST(Tone, FillsWholeFramesFromItsStartEachTime) {
  ToneSourceClass tone(1200);
  EXPECT_EQ(OutcomeOf([&] { tone.Synthesize(); }), kNotSetUp) << "without a format";
  EXPECT_EQ(tone.FillRenderBuffer(100, nullptr), 0U);
  RenderFormatBlock format = FixedTestFormat;
  format.header.nBlockAlign = 16;  // the tone is no whole number of such frames
  tone.SetFormat(format);
  tone.Synthesize();
  std::vector<std::uint8_t> whole(16 * 6000), part(16 * 100);
  EXPECT_EQ(tone.FillRenderBuffer(6000, whole.data()), 5512U);
  EXPECT_EQ(tone.FillRenderBuffer(100, part.data()), 100U);
  EXPECT_EQ(part, std::vector(whole.begin(), whole.begin() + 1600));
}

// The number that is drawn from these raw values, all of which must be used.
std::int32_t Drawn(std::int32_t low, std::int32_t high, const std::vector<std::uint32_t>& raw) {
  std::size_t used = 0;
  auto generator = [&] { return raw.at(used++); };
  const std::int32_t drawn = DrawUniform(generator, low, high);
  EXPECT_EQ(used, raw.size());
  return drawn;
}

TEST(Tone, DrawsItsFrequencyByScalingAndRejectingRawValues) {
  EXPECT_EQ(Drawn(900, 1100, {2147483648U}), 1000);
  EXPECT_EQ(Drawn(900, 1100, {4294967295U}), 1100);
  EXPECT_EQ(Drawn(900, 1100, {0, 0, 1}), 900);
  EXPECT_EQ(Drawn(900, 1100, {4230863307U, 4273599300U}), 1100) << "low words 99, rejected, and 100";
  EXPECT_EQ(Drawn(-0x7FFFFFFF - 1, 0x7FFFFFFF, {5}), -0x7FFFFFFF + 4);
  EXPECT_NEAR(Samples(ToneSourceClass(1100, 1100)).at(1), -668, 1);
}

TEST(SampleBuffer, TakesOnlyWhatFitsWhole) {
  SampleBufferClass buffer;
  EXPECT_FALSE(buffer.Write(kBytes, 0)) << "before it has a store";
  ASSERT_TRUE(buffer.Allocate(88200) && buffer.Write(kBytes, 88199));
  EXPECT_FALSE(buffer.Write(kBytes, 2) || buffer.Write(kBytes, 0xFFFFFFFFU) || buffer.Write(nullptr, 0));
  refuseMemory = true;
  EXPECT_FALSE(buffer.Allocate(2));
  EXPECT_EQ(OutcomeOf([] { CaptureSinkClass sink; }), kNoMemoryForSink);
  EXPECT_TRUE(Samples(ToneSourceClass(1200)).empty());
  refuseMemory = false;
  EXPECT_TRUE(buffer.Write(kBytes, 1) && buffer.Write(kBytes, 0));
  EXPECT_TRUE(buffer.Allocate(2) && buffer.Written().empty()) << "another store";
}

using Values = std::vector<double>;

CaptureFormatBlock Format(int bits, int validBits, std::uint8_t blockAlign) {
  CaptureFormatBlock format;
  format.header.nBlockAlign = blockAlign;
  format.header.wBitsPerSample = static_cast<std::uint16_t>(bits);
  format.tail[0] = static_cast<std::uint8_t>(validBits);
  format.tail[1] = static_cast<std::uint8_t>(validBits >> 8);
  return format;
}

Values Normalized(int bits, int validBits, const std::vector<std::uint8_t>& bytes) {
  CaptureSinkClass sink;
  sink.SetFormat(Format(bits, validBits, 1));
  for (const std::uint8_t& byte : bytes) sink.AppendFrames(&byte, 1);
  return sink.NormalizedSamples();
}

TEST(CaptureSink, DecodesByBitsAndValidBits) {
  EXPECT_EQ(Normalized(16, 3, {0xFF, 0x7F, 0, 0x80, 0xFF, 0xFF}), (Values{32767 / 32768.0, -1.0, -1 / 32768.0}));
  EXPECT_EQ(Normalized(16, 12, {0, 8}), Values{-2048 / 32768.0});
  EXPECT_EQ(Normalized(16, 12, {0, 16}), Values{-4096 / 32768.0}) << "extended by any bit from the sign upwards";
  EXPECT_EQ(Normalized(16, 11, {0, 8}), Values{2048 / 32768.0});
  for (const int width : {40, 256}) EXPECT_EQ(Normalized(16, width, {0, 0x80}), Values{1.0}) << "nothing is extended";
  EXPECT_EQ(Normalized(24, 24, {0, 0, 0x80, 0xFF, 0xFF, 0x7F}), (Values{-1.0, 8388607 / 8388608.0}));
  EXPECT_EQ(Normalized(20, 20, {0, 0, 8, 0, 0, 4}), (Values{-1.0, 0.5}));
  EXPECT_EQ(Normalized(32, 32, {0, 0, 0, 0x80, 0, 0, 0, 0x40}), (Values{-1.0, 0.5}));
  EXPECT_EQ(Normalized(4, 0, {0x81}), Values{129 / 8.0});
  EXPECT_EQ(Normalized(8, 0, {0x80}), Values{-1.0}) << "silence of 8 bits, which are unsigned";
  EXPECT_EQ(Normalized(16, 16, {0, 0, 0, 0x40, 0, 0, 0, 0x40, 1}), (Values{0.0, 0.5, 0.0, 0.5})) << "a byte over";
  for (const int bits : {0, 33}) EXPECT_EQ(OutcomeOf([&] { Normalized(bits, bits, {}); }), kPlatformError);
}

TEST(CaptureSink, FindsTheLargestMagnitudeWhereverItIs) {
  for (std::size_t size = 1; size < 20; ++size) {
    for (std::size_t place = 0; place < size; ++place) {
      Values samples(size, 0.25);
      samples[place] = place % 2 == 0 ? 0.5 : -0.5;
      EXPECT_EQ(LargestMagnitude(samples), 0.5) << place << " of " << size;
    }
  }
  EXPECT_EQ(LargestMagnitude({}), 0.0);
}

TEST(CaptureSink, StoresAPacketWholeOrNotAtAll) {
  CaptureSinkClass sink;
  sink.SetFormat(Format(32, 32, 4));
  const auto append = [&](const std::uint8_t* data, std::uint32_t frames) {
    return OutcomeOf([&] { sink.AppendFrames(data, frames); });
  };
  EXPECT_EQ(append(kBytes, 499999), 0);
  EXPECT_EQ(append(kBytes, 2), kSinkWriteFailed);
  EXPECT_EQ(append(kBytes, 0x40000000), kSinkWriteFailed) << "in 32 bits, 0 bytes";
  EXPECT_EQ(append(nullptr, 1), kSinkWriteFailed);
  EXPECT_EQ(sink.DecodeSamples().size(), 499999U);
  EXPECT_EQ(append(kBytes, 1), 0);
  EXPECT_EQ(append(kBytes, 1), kSinkWriteFailed);
}

}  // namespace
}  // namespace audio
