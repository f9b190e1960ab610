#include <gtest/gtest.h>

#include <algorithm>

#include "host/judging/verdict.h"

namespace host {
namespace {

constexpr double kHalf = 0.5;

const Check& CheckNamed(const Verdict& verdict, const std::string& name) {
  return *std::ranges::find(verdict.checks, name, &Check::name);
}

RecordingFindings CleanTone() {
  ChannelFindings channel;
  channel.level.peak = 1.0;
  channel.tone.heard = true;
  channel.tone.speed = 1.0;
  channel.tone.explainedShare = 1.0;
  channel.tone.signalToNoiseDb = 60.0;
  channel.correlation = 1.0;
  RecordingFindings findings;
  findings.seconds = 1.3;
  findings.tooLittle = false;
  findings.channels = {channel};
  return findings;
}

Verdict VerdictOf(const Evidence& evidence) {
  Verdict verdict = JudgeRecording(evidence, LimitsInForce({}, evidence.tonePlays));
  EXPECT_EQ(verdict.advice.empty(), verdict.passed);
  for (const Check& check : verdict.checks) EXPECT_EQ(check.advice.empty(), check.result != CheckResult::kFail);
  return verdict;
}

TEST(JudgeRecording, RestsOnTheLoudnessAloneWhereTheHostCannotListen) {
  Evidence evidence{.tonePlays = true, .maxAmplitude = kHalf, .notHeard = "The endpoint takes one stream."};
  const Verdict passed = VerdictOf(evidence);
  EXPECT_TRUE(passed.passed);
  EXPECT_EQ(passed.caution, "This rests on the loudness alone: The endpoint takes one stream.");
  EXPECT_EQ(CheckNamed(passed, "tone").result, CheckResult::kNotJudged);

  evidence.requiresListening = true;
  const Verdict failed = VerdictOf(evidence);
  EXPECT_FALSE(failed.passed);
  EXPECT_EQ(failed.word, "not listened");
}

TEST(JudgeRecording, TellsTheHostsOwnLossesFromThoseOfThePath) {
  RecordingFindings findings = CleanTone();
  findings.channels[0].interruptions = {
      {.kind = InterruptionKind::kDisturbance, .beginSeconds = 0.1, .lengthSeconds = 0.02, .byHost = true}};
  const Evidence evidence{.tonePlays = true, .maxAmplitude = kHalf, .findings = &findings};
  EXPECT_TRUE(VerdictOf(evidence).passed);
  findings.channels[0].interruptions[0].byHost = false;
  EXPECT_EQ(VerdictOf(evidence).word, "interrupted");
  EXPECT_EQ(VerdictOf(evidence).sentence, "The tone is interrupted: disturbance of 20 ms at 0.10 s.");
}

TEST(JudgeRecording, NamesWhatSaysMostAboutTheCause) {
  // Each condition is added to those before it, and each time the verdict is about the one that explains the others.
  RecordingFindings findings = CleanTone();
  ChannelFindings& channel = findings.channels[0];
  const auto word = [&](double peak) {
    return VerdictOf({.tonePlays = true, .maxAmplitude = peak, .findings = &findings}).word;
  };
  channel.tone.lostAtEndSeconds = 0.4;
  EXPECT_EQ(word(kHalf), "cut short");
  channel.interruptions = {{.lengthSeconds = 0.02}};
  EXPECT_EQ(word(kHalf), "interrupted");
  channel.tone.signalToNoiseDb = 1.0;
  EXPECT_EQ(word(kHalf), "noise");
  channel.clipping.flatShare = 0.2;
  EXPECT_EQ(word(kHalf), "distortion");
  channel.tone.speed = 0.92;
  EXPECT_EQ(word(kHalf), "wrong speed");
  EXPECT_EQ(word(1.0), "clipping");
  channel.tone.heard = false;
  EXPECT_EQ(word(kHalf), "no tone");
  EXPECT_EQ(word(0.0), "silence");
  findings.tooLittle = true;
  EXPECT_EQ(word(kHalf), "no tone");
}

}  // namespace
}  // namespace host
