#pragma once

#include <optional>
#include <string>
#include <tuple>

#include "host/base/member.h"
#include "host/contract/contract.h"

namespace host {

// What the peak of a record test must lie within, full scale 1.0. One that isn't there doesn't apply.
struct Limits {
  std::optional<double> minPeak, maxPeak;

  static constexpr auto Members() {
    return std::tuple(Member("minPeak", &Limits::minPeak), Member("maxPeak", &Limits::maxPeak));
  }
};

// Without others: a tone at full level that is heard at less than a hundredth didn't come through, and one that comes
// within a thousandth of full scale was cut off.
inline constexpr double kDefaultMinPeak = 0.01, kDefaultMaxPeak = 0.999;

// What a test amounts to. The module measures, and doesn't judge what it measured.
enum class Judgement { kPass, kSilence, kTooQuiet, kClipping, kFailed };

// kFailed for an outcome that is no pass.
Judgement Judge(Test test, const Outcome& outcome, const Limits& limits);

// "pass", "silence", "too quiet", "clipping" or "failed".
const char* Word(Judgement judgement);

// A sentence on a test that isn't kFailed.
std::string JudgementText(Judgement judgement, const Outcome& outcome, const Limits& limits);

// What a person can do about it, in a sentence or two; empty for a pass.
std::string AdviceFor(Judgement judgement, const Outcome& outcome);

}  // namespace host
