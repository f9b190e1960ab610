#include <gtest/gtest.h>

#include <fmt/core.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

#include "host/base/json.h"
#include "host/listening/sound_summary.h"
#include "host/report/terminal_plot.h"
#include "platform/sample_format.h"

namespace {

using namespace host;

// A second and a half: half a second of pause, then a sine, with noise over both.
std::vector<float> Sound(double rate, double hertz, double amplitude, double noiseRms) {
  std::mt19937 random(7);
  std::normal_distribution<double> noise(0.0, noiseRms);
  std::vector<float> samples(static_cast<std::size_t>(rate * 1.5));
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const double time = static_cast<double>(i) / rate;
    const double tone = time < 0.5 ? 0.0 : amplitude * std::sin(2.0 * std::numbers::pi * hertz * time);
    samples[i] = static_cast<float>(tone + (noiseRms > 0.0 ? noise(random) : 0.0));
  }
  return samples;
}

double Db(double amplitude) { return 20.0 * std::log10(amplitude); }

TEST(Summarise, FindsLevelFrequencyAndNoiseOfAKnownSound) {
  struct Case {
    double rate, hertz, amplitude, noiseRms;
  };
  for (const auto& [rate, hertz, amplitude, noiseRms] :
       {Case{48000, 1200, 0.5, 0.001}, Case{44100, 997.3, 1.0, 0.01}, Case{8000, 3100, 0.01, 0.0001},
        Case{192000, 61.7, 0.25, 0.0005}, Case{16000, 1200, 0.9, 0.00002}}) {
    SCOPED_TRACE(fmt::format("{} Hz at a rate of {}", hertz, rate));
    const std::optional<SoundSummary> heard = Summarise(Sound(rate, hertz, amplitude, noiseRms), rate);
    ASSERT_TRUE(heard.has_value());
    EXPECT_NEAR(heard->seconds, 1.5, 1e-9);
    EXPECT_NEAR(heard->peak, amplitude, 5.0 * noiseRms);
    EXPECT_NEAR(Db(heard->rms), Db(amplitude / std::numbers::sqrt2) + 10.0 * std::log10(2.0 / 3.0), 0.05);
    EXPECT_NEAR(heard->dominantHz, hertz, 0.3);
    EXPECT_NEAR(Db(heard->noiseFloor), Db(noiseRms), 1.0);
    EXPECT_NEAR(heard->envelope.front().second, 0.0, 5.0 * noiseRms);
    const auto bySecond = [](const auto& one, const auto& other) { return one.second < other.second; };
    const auto largest = std::max_element(heard->envelope.begin(), heard->envelope.end(), bySecond);
    EXPECT_NEAR(largest->second, amplitude, 5.0 * noiseRms);
    // The spectrum is a mean over time; for a third of that there is no tone.
    const double highest = *std::max_element(heard->spectrum.begin(), heard->spectrum.end());
    EXPECT_NEAR(highest, Db(amplitude) + 10.0 * std::log10(2.0 / 3.0), 0.6);
  }
}

TEST(Summarise, TellsSilenceAnOffsetAndClipping) {
  const std::optional<SoundSummary> silence = Summarise(std::vector<float>(48000, 0.0F), 48000);
  EXPECT_EQ(silence->peak + silence->rms + silence->noiseFloor + silence->dominantHz, 0.0);
  EXPECT_EQ(silence->spectrum, std::vector<double>(300, SoundSummary::kLowestLevel));
  const std::optional<SoundSummary> offset = Summarise(std::vector<float>(48000, 0.25F), 48000);
  EXPECT_EQ(offset->peak, 0.25);
  EXPECT_LT(*std::max_element(offset->spectrum.begin(), offset->spectrum.end()), -150.0);
  std::vector<float> clipped = Sound(48000, 1000, 2.0, 0.0);
  for (float& sample : clipped) sample = std::clamp(sample, -1.0F, 32767.0F / 32768.0F);
  // Two thirds of each period lie above half of the peak, and the tone lasts a second.
  EXPECT_NEAR(static_cast<double>(Summarise(clipped, 48000)->fullScaleSamples), 32000.0, 2000.0);
  EXPECT_FALSE(Summarise(std::vector<float>(4095), 48000).has_value());
  EXPECT_FALSE(Summarise(std::vector<float>(4096), 0).has_value());
}

TEST(SoundSummary, ComesBackFromJson) {
  const SoundSummary sound = *Summarise(Sound(48000, 1200, 0.5, 0.001), 48000);
  const std::string json = TextOf(sound);
  EXPECT_LT(json.size(), 20000U);
  const auto read = ParseJson(json).get<SoundSummary>();
  EXPECT_EQ(TextOf(read), json);
  EXPECT_NEAR(read.dominantHz, 1200.0, 1.0);
  for (const char* other : {"null", "{}", "[1]", R"({"envelope":[[0,"a"]],"spectrum":[0],"highestHz":1000})"}) {
    EXPECT_THROW(ParseJson(other).get<SoundSummary>(), Json::exception) << other;
  }
}

TEST(SampleFormat, ReadsEveryKindOfSample) {
  struct Case {
    WORD tag, bits;
    std::vector<BYTE> sample;
    double value;
  };
  for (const Case& c :
       {Case{WAVE_FORMAT_PCM, 8, {0}, -1.0}, Case{WAVE_FORMAT_PCM, 8, {192}, 0.5},
        Case{WAVE_FORMAT_PCM, 16, {0, 0xC0}, -0.5}, Case{WAVE_FORMAT_PCM, 24, {0, 0, 0x20}, 0.25},
        Case{WAVE_FORMAT_PCM, 32, {0, 0, 0, 0x80}, -1.0}, Case{WAVE_FORMAT_IEEE_FLOAT, 32, {0, 0, 0, 0xBF}, -0.5},
        Case{WAVE_FORMAT_IEEE_FLOAT, 32, {0, 0, 0xC0, 0x7F}, 0.0}}) {
    WAVEFORMATEX wave{c.tag, 2, 48000, 0, static_cast<WORD>(c.bits / 4), c.bits, 0};
    const std::optional<platform::SampleFormat> format = platform::SampleFormat::From(wave);
    ASSERT_TRUE(format.has_value()) << c.bits;
    EXPECT_EQ(format->Read(c.sample.data()), c.value) << c.bits;
    wave.nBlockAlign = 0;
    EXPECT_FALSE(platform::SampleFormat::From(wave).has_value());
  }
}

TEST(TerminalPlot, KeepsToTheTerminal) {
  const SoundSummary heard = *Summarise(Sound(48000, 1200, 0.5, 0.001), 48000);
  for (const int columns : {40, 80, 500}) {
    const std::string plot = TerminalPlot(heard, {.columns = columns}, 1200);
    for (std::size_t begin = 0, end; (end = plot.find('\n', begin)) != std::string::npos; begin = end + 1) {
      EXPECT_LT(end - begin, static_cast<std::size_t>(columns)) << plot;
    }
    EXPECT_NE(plot.find("^ tone, 1.2 kHz\n"), std::string::npos);
    EXPECT_NE(plot.find("-120 dB  .:-=+*#@ 0 dBFS\n"), std::string::npos);
    EXPECT_EQ(plot.find_first_of("\x80\xE2\x1B"), std::string::npos);
  }
}

TEST(TerminalPlot, ShowsSilenceAsSilence) {
  for (const double noise : {0.0, 0.0001}) {
    const std::string plot = TerminalPlot(*Summarise(Sound(48000, 1200, 0.0, noise), 48000), {.columns = 80});
    EXPECT_NE(plot.find("silence"), std::string::npos) << plot;
    EXPECT_NE(plot.find("+1 "), std::string::npos) << plot;
    // A flat line, and one in the spectrum's scale.
    EXPECT_EQ(std::count(plot.begin(), plot.end(), '#'), 64 + 1) << plot;
  }
}

}  // namespace
