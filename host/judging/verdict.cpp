#include "host/judging/verdict.h"

#include <algorithm>
#include <array>

#include "host/judging/checks.h"

namespace host {
namespace {

constexpr std::array kAfterTone = {"noise", "distortion", "interruptions", "duration", "speed", "channels"};

// What says most about the cause comes first. A tone that isn't there makes every other figure meaningless; distortion and
// noise are measured where nothing interrupts the tone, and may hide its ends or look like interruptions themselves.
constexpr std::array kByWeight = {"tone",  "level",         "speed",    "distortion",
                                  "noise", "interruptions", "duration", "channels"};

std::size_t Weight(const Check& check) {
  return static_cast<std::size_t>(std::find(kByWeight.begin(), kByWeight.end(), check.name) - kByWeight.begin());
}

void AddUnjudged(Verdict& verdict, const std::string& why) {
  for (const char* name : kAfterTone) {
    verdict.checks.push_back({.name = name, .result = CheckResult::kNotJudged, .sentence = why});
  }
}

void Conclude(Verdict& verdict) {
  const Check* heaviest = nullptr;
  for (const Check& check : verdict.checks) {
    if (check.result != CheckResult::kFail) continue;
    if (heaviest == nullptr || Weight(check) < Weight(*heaviest)) heaviest = &check;
  }
  if (heaviest == nullptr) return;
  verdict.passed = false;
  verdict.word = heaviest->word;
  verdict.sentence = heaviest->sentence;
  verdict.advice = heaviest->advice;
}

}  // namespace

const char* Word(CheckResult result) {
  switch (result) {
    case CheckResult::kPass: return "pass";
    case CheckResult::kFail: return "fail";
    case CheckResult::kNotJudged: break;
  }
  return "not judged";
}

Verdict JudgeRecording(const Evidence& evidence, const Limits& limits) {
  Verdict verdict;
  Check level = CheckLevel(evidence, limits);
  const bool isTooQuiet = level.result == CheckResult::kFail && level.word != kClippingWord;
  if (!evidence.tonePlays) {
    verdict.checks.push_back(std::move(level));
  } else if (isTooQuiet && (evidence.findings == nullptr || !ToneIsHeard(*evidence.findings))) {
    // The level is the reason; that there is no tone in silence needs no saying.
    verdict.checks.push_back({.name = "tone",
                              .result = CheckResult::kNotJudged,
                              .sentence = "There is too little sound to find a tone in."});
    verdict.checks.push_back(std::move(level));
    AddUnjudged(verdict, "The tone wasn't heard.");
  } else if (evidence.findings == nullptr) {
    verdict.checks.push_back(CheckListening(evidence));
    verdict.checks.push_back(std::move(level));
    AddUnjudged(verdict, "The host couldn't listen.");
    verdict.caution = "This rests on the loudness alone: " + evidence.notHeard;
  } else {
    const RecordingFindings& findings = *evidence.findings;
    verdict.checks.push_back(CheckTone(findings, limits));
    verdict.checks.push_back(std::move(level));
    if (ToneIsHeard(findings)) {
      verdict.checks.push_back(CheckNoise(findings, limits));
      verdict.checks.push_back(CheckDistortion(findings, limits));
      verdict.checks.push_back(CheckInterruptions(findings, limits));
      verdict.checks.push_back(CheckDuration(findings, limits));
      verdict.checks.push_back(CheckSpeed(findings, limits));
      verdict.checks.push_back(CheckChannels(findings, limits));
    } else {
      AddUnjudged(verdict, "The tone wasn't heard.");
    }
  }
  Conclude(verdict);
  return verdict;
}

}  // namespace host
