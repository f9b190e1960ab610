#include "host/report/run_words.h"

#include <fmt/chrono.h>
#include <fmt/core.h>

#include "host/analysis/tone.h"
#include "host/endpoints/platform.h"

namespace host {

std::string VerdictTitle(const RunRecord& run) {
  if (!run.outcome.has_value()) return "NO RESULT";
  if (run.Passed()) return "PASS";
  return run.verdict.word == "failed" ? "FAIL" : "FAIL: " + run.verdict.word;
}

std::string EndpointsTitle(const RunRecord& run) {
  if (run.test == Test::kPlay) return fmt::format("Playing on '{}'", run.Tested().name);
  if (!run.render.has_value()) return fmt::format("Listening to '{}'", run.Tested().name);
  return fmt::format("Recording from '{}' while '{}' plays", run.Tested().name, run.render->name);
}

std::string ReasonOf(const RunRecord& run) {
  return run.failure.has_value() ? run.failure->message : run.verdict.sentence;
}

std::string AdviceOf(const RunRecord& run) {
  return run.failure.has_value() ? run.failure->advice : run.verdict.advice;
}

std::string TestedText(const RunRecord& run) {
  return fmt::format("{:%Y-%m-%d %H:%M:%S %z}, rmthost {}, platform {}", fmt::localtime(run.began), ZQRMT_VERSION,
                     run.platform);
}

std::string VirtualNote(const RunRecord& run) {
  if (!EndsWithProcess(run.platform)) return "";
  return "This ran on the virtual machine: nothing was played or heard by real hardware.";
}

double ToneHz(const RunRecord& run) { return run.test == Test::kRecord && run.render.has_value() ? kToneHz : 0.0; }

const char* StyleOf(CheckResult result) {
  switch (result) {
    case CheckResult::kPass: return "pass";
    case CheckResult::kFail: return "fail";
    case CheckResult::kNotJudged: break;
  }
  return "faint";
}

}  // namespace host
