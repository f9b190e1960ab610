// The analysis of recordings that a simulated path makes of the tone: each fault is found and named, and none on good paths.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <ostream>
#include <random>
#include <string>

#include "audio/tone_source.h"
#include "host/analysis/analyse.h"

namespace host {
namespace {

double Cycles(double cycles) { return std::sin(2.0 * std::numbers::pi * cycles); }

double Tone(double seconds) {
  if (seconds < 0.0 || seconds >= 1.0) return 0.0;
  double sum = 0.0;
  for (int k = 0; k < 7; ++k) sum += (k % 2 == 1 ? 1.0 : -1.0) * Cycles((1185.0 + 5.0 * k) * seconds);
  return sum / 7.0;
}

double Silence(double) { return 0.0; }

// From `at` to `until` what is heard is `during` seconds late, and from then on `after` seconds; kNever is silence.
constexpr double kNever = 100.0;
struct Event {
  double at = 2.0;
  double until = 2.0;
  double during = 0.0;
  double after = 0.0;
};

// A path from the tone to a recording.
struct Path {
  double rate = 48000.0;
  double seconds = 1.5;
  double delay = 0.12;
  double speed = 1.0;
  double gain = 0.5;
  double offset = 0.0;
  double noiseDb = -60.0;  // against the tone
  double humHz = 0.0;
  double otherHz = 0.0;
  double clip = 1.0;
  int bits = 16;
  double echoSeconds = 0.0;
  double gainPerSecond = 1.0;  // automatic gain
  Event event = {};
  double (*source)(double) = Tone;
};

double Heard(const Path& path, double seconds) {
  const Event& event = path.event;
  const double late = seconds < event.at ? 0.0 : seconds < event.until ? event.during : event.after;
  return path.source(seconds - late);
}

std::vector<float> Record(const Path& path) {
  std::mt19937 random(7);
  const double noise = path.gain * std::pow(10.0, path.noiseDb / 20.0) * std::sqrt(3.0 / 14.0);
  const double steps = std::exp2(path.bits - 1);
  std::vector<float> samples(static_cast<std::size_t>(path.seconds * path.rate));
  for (std::size_t n = 0; n < samples.size(); ++n) {
    const double time = static_cast<double>(n) / path.rate;
    const double seconds = (time - path.delay) * path.speed;
    double sound = Heard(path, seconds);
    if (path.echoSeconds > 0.0) sound += 0.4 * Heard(path, seconds - path.echoSeconds);
    sound = std::clamp(sound, -path.clip, path.clip) * path.gain * std::pow(path.gainPerSecond, seconds);
    sound += noise * (2.0 * static_cast<double>(random()) / 4294967295.0 - 1.0) + path.offset;
    sound += 0.05 * (Cycles(path.humHz * time) + Cycles(3.0 * path.humHz * time)) + 0.05 * Cycles(path.otherHz * time);
    samples[n] = static_cast<float>(std::clamp(std::round(sound * steps), -steps, steps - 1.0) / steps);
  }
  return samples;
}

ChannelFindings Analyse(const Path& path) {
  return AnalyseRecording({.rate = path.rate, .channels = {Record(path)}, .discontinuities = {}}).channels.at(0);
}

bool IsClipped(const ClippingFindings& clipping) {
  return clipping.flatShare > 0.006 || (clipping.peakCompressionDb > 0.5 && clipping.intermodulationDb > -35.0);
}

struct PathCase {
  std::string name;
  Path path;
};
void PrintTo(const PathCase& one, std::ostream* stream) { *stream << one.name; }
std::string NameOf(const testing::TestParamInfo<PathCase>& info) { return info.param.name; }

class GoodPath : public testing::TestWithParam<PathCase> {};

TEST_P(GoodPath, HasNoFault) {
  const Path& path = GetParam().path;
  const ChannelFindings findings = Analyse(path);
  ASSERT_TRUE(findings.tone.heard);
  EXPECT_NEAR(findings.tone.speed, 1.0, 1e-4);
  EXPECT_NEAR(findings.tone.beginSeconds, path.delay, 0.01);
  EXPECT_LT(findings.tone.lostAtBeginSeconds, 0.1);
  EXPECT_LT(findings.tone.lostAtEndSeconds, 0.1);
  EXPECT_TRUE(findings.interruptions.empty());
  EXPECT_FALSE(IsClipped(findings.clipping));
  EXPECT_EQ(findings.remainder.humHz, 0.0);
}

INSTANTIATE_TEST_SUITE_P(, GoodPath,
                         testing::Values(PathCase{"Plain", {}}, PathCase{"Inverted", {.gain = -0.5}},
                                         PathCase{"Quiet", {.gain = 0.016}}, PathCase{"EightBits", {.bits = 8}},
                                         PathCase{"Noisy", {.noiseDb = -20.0}},
                                         PathCase{"Telephone", {.rate = 8000.0, .noiseDb = -30.0}},
                                         PathCase{"FastRate", {.rate = 192000.0}}, PathCase{"Offset", {.offset = 0.1}},
                                         PathCase{"Echo", {.echoSeconds = 0.03}},
                                         PathCase{"AutomaticGain", {.gain = 0.2, .gainPerSecond = 3.0}},
                                         PathCase{"EndedByTheRecording", {.seconds = 1.0, .delay = 0.25}}),
                         NameOf);

struct InterruptionCase {
  std::string name;
  Path path;
  InterruptionKind kind;
  double seconds;  // its length
};
void PrintTo(const InterruptionCase& one, std::ostream* stream) { *stream << one.name; }

class Interrupted : public testing::TestWithParam<InterruptionCase> {};

TEST_P(Interrupted, IsFoundOnceWhereItIs) {
  const Path& path = GetParam().path;
  const ChannelFindings findings = Analyse(path);
  ASSERT_TRUE(findings.tone.heard);
  ASSERT_EQ(findings.interruptions.size(), 1u);
  const ToneInterruption& found = findings.interruptions[0];
  EXPECT_EQ(found.kind, GetParam().kind);
  EXPECT_NEAR(found.beginSeconds, path.delay + path.event.at, 0.004);
  EXPECT_NEAR(found.lengthSeconds, GetParam().seconds, 0.0035);
  EXPECT_NEAR(found.shiftSeconds, path.event.after, 5e-5);
}

INSTANTIATE_TEST_SUITE_P(
    , Interrupted,
    testing::Values(
        InterruptionCase{"Gap", {.noiseDb = -20, .event = {0.51, 0.515, kNever}}, InterruptionKind::kGap, 0.005},
        InterruptionCase{"GapInserted", {.event = {0.51, 0.516, kNever, 0.006}}, InterruptionKind::kGap, 0.006},
        InterruptionCase{"Repeat", {.event = {0.51, 0.516, 0.0071}}, InterruptionKind::kRepeat, 0.006},
        InterruptionCase{"Delay", {.noiseDb = -20, .event = {0.51, 0.51, 0, 0.0123}}, InterruptionKind::kRepeat, 0},
        InterruptionCase{"Loss", {.noiseDb = -20, .event = {0.51, 0.51, 0, -0.005}}, InterruptionKind::kLoss, 0}),
    [](const auto& one) { return one.param.name; });

struct FaultCase {
  std::string name;
  Path path;
  bool (*found)(const ChannelFindings&);
};
void PrintTo(const FaultCase& one, std::ostream* stream) { *stream << one.name; }

class Fault : public testing::TestWithParam<FaultCase> {};

TEST_P(Fault, IsFound) {
  const ChannelFindings findings = Analyse(GetParam().path);
  ASSERT_TRUE(findings.tone.heard);
  EXPECT_TRUE(GetParam().found(findings));
}

bool IsNear(double found, double expected, double error) { return std::abs(found - expected) < error; }

INSTANTIATE_TEST_SUITE_P(
    , Fault,
    testing::Values(
        FaultCase{"Slow",
                  {.seconds = 1.7, .speed = 44.1 / 48.0},
                  [](const auto& f) { return IsNear(f.tone.speed, 44.1 / 48.0, 1e-4); }},
        FaultCase{"LittleFast", {.speed = 1.002}, [](const auto& f) { return IsNear(f.tone.speed, 1.002, 1e-4); }},
        FaultCase{"OnePartialOff",
                  {.speed = 241.0 / 240.0},
                  [](const auto& f) { return IsNear(f.tone.speed, 241.0 / 240.0, 1e-4); }},
        FaultCase{"CutShort",
                  {.event = {0.7, 0.7, 0, kNever}},
                  [](const auto& f) { return !f.tone.recordingEndedFirst && f.tone.lostAtEndSeconds > 0.25; }},
        FaultCase{"Clipped", {.clip = 0.7}, [](const auto& f) { return f.clipping.flatShare > 0.02; }},
        FaultCase{"ClippedInFewSteps",
                  {.gain = 0.1, .clip = 0.7, .bits = 8},
                  [](const auto& f) { return f.clipping.flatShare > 0.02; }},
        FaultCase{"ClippedBeforeNoise",
                  {.noiseDb = -25.0, .clip = 0.7},
                  [](const auto& f) { return IsClipped(f.clipping) && f.clipping.harmonicsDb > -30.0; }},
        FaultCase{"Hum",
                  {.humHz = 60.0},
                  [](const auto& f) { return f.remainder.humHz == 60.0 && IsNear(f.remainder.humDb, -23.0, 1.0); }},
        FaultCase{"OtherTone",
                  {.otherHz = 3210.0},
                  [](const auto& f) {
                    return IsNear(f.remainder.otherToneHz, 3210.0, 1.0) && IsNear(f.remainder.otherToneDb, -26.0, 1.0);
                  }},
        FaultCase{"Noise", {.noiseDb = -10.0}, [](const auto& f) { return IsNear(f.tone.signalToNoiseDb, 10.0, 0.5); }},
        FaultCase{"Offset", {.offset = 0.1}, [](const auto& f) { return IsNear(f.level.dcOffset, 0.1, 1e-3); }},
        FaultCase{"AutomaticGain",
                  {.gain = 0.2, .gainPerSecond = 3.0},
                  [](const auto& f) { return f.tone.levelRangeDb > 5.0; }}),
    [](const auto& one) { return one.param.name; });

class WithoutTone : public testing::TestWithParam<PathCase> {};

TEST_P(WithoutTone, NoneIsHeard) { EXPECT_FALSE(Analyse(GetParam().path).tone.heard); }

INSTANTIATE_TEST_SUITE_P(
    , WithoutTone,
    testing::Values(
        PathCase{"Silence", {.noiseDb = -200.0, .source = Silence}},
        PathCase{"Noise", {.noiseDb = 0.0, .source = Silence}}, PathCase{"Hum", {.humHz = 50.0, .source = Silence}},
        PathCase{"Sine", {.source = [](double time) { return Cycles(1200.0 * time); }}},
        PathCase{"OtherSine", {.source = [](double time) { return Cycles(1000.0 * time); }}},
        PathCase{"Chord",
                 {.source = [](double time) { return 0.5 * (Cycles(1175.0 * time) + Cycles(1245.0 * time)); }}},
        PathCase{"Tremolo", {.source = [](double time) { return (1.0 + Cycles(5.0 * time)) * Cycles(1200.0 * time); }}},
        PathCase{"LowRate", {.rate = 1000.0, .source = [](double time) { return Cycles(200.0 * time); }}}),
    NameOf);

TEST(Analysis, FindsTheGeneratorsTone) {
  audio::ToneSourceClass source(1200);
  source.SetFormat(audio::FixedTestFormat);
  source.Synthesize();
  std::vector<std::uint8_t> bytes(88200);
  ASSERT_EQ(source.FillRenderBuffer(44100, bytes.data()), 44100u);
  std::vector<float> samples;
  for (std::size_t i = 0; i < bytes.size(); i += 2) {
    samples.push_back(static_cast<std::int16_t>(bytes[i] | bytes[i + 1] << 8) / 32768.0F);
  }
  const auto findings = AnalyseRecording({.rate = 44100.0, .channels = {samples}, .discontinuities = {}});
  const ChannelFindings& channel = findings.channels.at(0);
  ASSERT_TRUE(channel.tone.heard);
  EXPECT_NEAR(channel.tone.patternMatch, 1.0, 1e-3);
  EXPECT_GT(channel.tone.signalToNoiseDb, 70.0);
  ASSERT_EQ(channel.tone.partials.size(), 7u);
  for (const double amplitude : channel.tone.partials) EXPECT_NEAR(amplitude, channel.tone.rms / std::sqrt(3.5), 0.001);
  EXPECT_TRUE(channel.clipping.clippedStretches.empty());
}

TEST(Analysis, SaysWhereTheToneIsClipped) {
  const ClippingFindings clipping = Analyse({.clip = 0.7}).clipping;
  ASSERT_EQ(clipping.clippedStretches.size(), 5u);  // one for each peak of the envelope
  for (std::size_t i = 0; i < 5; ++i) {
    const ClippedStretch& stretch = clipping.clippedStretches[i];
    EXPECT_NEAR(stretch.beginSeconds + 0.5 * stretch.lengthSeconds, 0.12 + 0.1 + 0.2 * static_cast<double>(i), 0.001);
    EXPECT_NEAR(stretch.lengthSeconds, 0.026, 0.001);  // where the envelope is above 0.7
  }
}

TEST(Analysis, ComparesChannels) {
  const auto findings =
      AnalyseRecording({.rate = 48000.0,
                        .channels = {Record({.source = Silence}), Record({.gain = -0.25}), Record({.gain = 0.5})},
                        .discontinuities = {}});
  EXPECT_EQ(findings.referenceChannel, 2u);
  EXPECT_FALSE(findings.channels[0].tone.heard);
  EXPECT_EQ(findings.channels[0].relativeLevelDb, kSilenceDb);
  EXPECT_NEAR(findings.channels[1].correlation, -1.0, 0.01);
  EXPECT_NEAR(findings.channels[1].relativeLevelDb, -6.0, 0.1);
}

TEST(Analysis, FindsAGapWhileAnEchoBuildsUp) {
  std::vector<float> samples = Record({.echoSeconds = 0.11});
  std::fill_n(samples.begin() + static_cast<std::ptrdiff_t>(0.215 * 48000.0), 240, 0.0F);
  const auto findings = AnalyseRecording({.rate = 48000.0, .channels = {samples}, .discontinuities = {}});
  ASSERT_EQ(findings.channels[0].interruptions.size(), 1u);
  const ToneInterruption& gap = findings.channels[0].interruptions[0];
  EXPECT_EQ(gap.kind, InterruptionKind::kGap);
  EXPECT_NEAR(gap.beginSeconds, 0.215, 0.002);
  EXPECT_NEAR(gap.lengthSeconds, 0.005, 0.002);
}

TEST(Analysis, KnowsItsHostsGaps) {
  const std::vector<float> samples = Record({.event = {0.51, 0.515, kNever}});
  for (const double seconds : {0.63, 0.9}) {
    const auto lost = static_cast<std::size_t>(seconds * 48000.0);
    const auto findings = AnalyseRecording({.rate = 48000.0, .channels = {samples}, .discontinuities = {lost}});
    ASSERT_EQ(findings.channels[0].interruptions.size(), 1u);
    EXPECT_EQ(findings.channels[0].interruptions[0].byHost, seconds == 0.63);
  }
}

TEST(Analysis, FindsTheToneInALongRecording) {
  const ChannelFindings channel = Analyse({.rate = 16000.0, .seconds = 60.0, .delay = 40.3});
  ASSERT_TRUE(channel.tone.heard);
  EXPECT_NEAR(channel.tone.beginSeconds, 40.3, 0.01);
}

TEST(Analysis, TakesAnyRecording) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  const std::vector<float> bad = {1.0F, std::numeric_limits<float>::quiet_NaN(), kInfinity, -kInfinity};
  for (const double rate : {48000.0, 0.0, -1.0, 1e-300, 1e300, std::nan("")}) {
    for (const auto& channels : {std::vector<std::vector<float>>{}, {{}}, {{1.0F}}, {bad, {}}}) {
      const auto findings = AnalyseRecording({.rate = rate, .channels = channels, .discontinuities = {5}});
      EXPECT_TRUE(findings.tooLittle || rate == 1e-300);
      EXPECT_EQ(findings.channels.size(), channels.size());
    }
  }
  EXPECT_EQ(
      AnalyseRecording({.rate = 48000.0, .channels = {bad}, .discontinuities = {}}).channels[0].level.invalidSamples,
      3u);

  std::vector<float> samples = Record({});
  for (std::size_t n = 0; n < samples.size(); n += 997) samples[n] = kInfinity;
  const auto findings = AnalyseRecording({.rate = 48000.0, .channels = {samples, bad}, .discontinuities = {}});
  EXPECT_TRUE(findings.channels[0].tone.heard);
}

}  // namespace
}  // namespace host
