#include "tools/measure_verdict/trial.h"

#include <fstream>
#include <stdexcept>

#include "host/call/module.h"
#include "host/call/module_call.h"
#include "host/judging/judge.h"
#include "text/utf.h"
#include "tools/measure_verdict/test_path.h"

namespace measure_verdict {

host::Verdict RunTrial(const std::string& description, const std::filesystem::path& directory) {
  const std::filesystem::path file = directory / "machine.json";
  std::ofstream(file) << description;
  const host::CallReport report = host::CallHere(
      {.platform = "virtual:" + file.string(),
       .module = text::Utf8FromPath(host::DefaultModuleFile()),
       .test = host::Test::kRecord,
       .contract = host::BuildContract(host::Test::kRecord, {.capture = kMicrophoneId, .render = kSpeakerId}),
       .listenTo = kMicrophoneId});
  if (report.failure.has_value()) throw std::runtime_error(report.failure->message + " " + description);
  const auto outcome = report.reply.has_value() ? host::ReadOutcome(*report.reply) : std::nullopt;
  if (!outcome.has_value() || !host::Passed(host::Test::kRecord, *outcome) || !report.findings.has_value()) {
    throw std::runtime_error("The module's test failed or wasn't heard: " + report.reply.value_or("") +
                             report.notHeard.value_or("") + " " + description);
  }
  const host::Evidence evidence{
      .tonePlays = true, .maxAmplitude = outcome->maxAmplitude, .findings = &*report.findings};
  return host::Judge(host::Test::kRecord, *outcome, report.refused, evidence, host::LimitsInForce({}, true));
}

}  // namespace measure_verdict
