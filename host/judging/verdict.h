#pragma once

#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "host/analysis/findings.h"
#include "host/base/member.h"
#include "host/judging/limits.h"

namespace host {

// What there is to judge a record test by. Owns nothing: what it points to must outlive the judging.
struct Evidence {
  bool tonePlays = false;                       // a render endpoint played the test tone meanwhile
  double maxAmplitude = 0.0;                    // the module's figure
  const RecordingFindings* findings = nullptr;  // of the host's own recording; null when it has none
  std::string notHeard = {};                    // then: why, in a sentence
  bool requiresListening = false;               // without a recording of its own the test doesn't pass
};

// One figure with its limits.
struct Measurement {
  std::string name;  // as in the findings, with the unit in it
  double value = 0.0;
  std::optional<double> atLeast, atMost;

  static constexpr auto Members() {
    using M = Measurement;
    return std::tuple(Member("name", &M::name), Member("value", &M::value), Member("atLeast", &M::atLeast),
                      Member("atMost", &M::atMost));
  }

  bool Holds() const { return !(atLeast.has_value() && value < *atLeast) && !(atMost.has_value() && value > *atMost); }
};

enum class CheckResult { kPass, kFail, kNotJudged };

// "pass", "fail" or "not judged".
const char* Word(CheckResult result);

// One thing that a passing test must have, with what was measured of it.
struct Check {
  std::string name;  // tone, level, noise, distortion, interruptions, duration, speed or channels
  CheckResult result = CheckResult::kPass;
  std::vector<Measurement> measurements = {};
  std::string word = {};      // of a failure: the headline that it makes, such as "silence"
  std::string sentence = {};  // of a failure: what was heard; of what wasn't judged: why
  std::string advice = {};    // of a failure: what a person can do

  static constexpr auto Members() {
    using C = Check;
    return std::tuple(Member("name", &C::name), Member("result", &C::result), Member("measurements", &C::measurements),
                      Member("sentence", &C::sentence), Member("advice", &C::advice));
  }
};

// What a test comes to: the first failure in order of weight, and every check.
struct Verdict {
  bool passed = true;
  std::string word = "pass";
  std::string sentence = {};  // of a pass, the module's
  std::string advice = {};    // empty for a pass
  std::string caution = {};   // what a pass doesn't rest on; empty when it rests on everything
  std::vector<Check> checks = {};
};

// Judges a test that the module passed. A pure function.
Verdict JudgeRecording(const Evidence& evidence, const Limits& limits);

}  // namespace host
