#include "host/judging/judge.h"

#include "audiotests/zqrmt_return_codes.h"

namespace host {

namespace {

Verdict FailureOf(const Outcome& outcome, const std::optional<RefusedOperation>& refused) {
  Verdict verdict{.passed = false, .word = "failed", .sentence = outcome.returnMessage, .advice = AdviceFor(outcome)};
  if (outcome.returnCode != ZQRMT_RETURN_PLATFORM || !refused.has_value()) return verdict;
  verdict.sentence += ": " + RefusalText(*refused);
  const std::string advice = AdviceFor(*refused);
  if (!advice.empty()) verdict.advice = advice;
  return verdict;
}

}  // namespace

Verdict Judge(Test test, const Outcome& outcome, const std::optional<RefusedOperation>& refused,
              const Evidence& evidence, const Limits& limits) {
  if (!Passed(test, outcome)) return FailureOf(outcome, refused);
  Verdict verdict = test == Test::kRecord ? JudgeRecording(evidence, limits) : Verdict{};
  if (verdict.passed) verdict.sentence = outcome.returnMessage;
  return verdict;
}

}  // namespace host
