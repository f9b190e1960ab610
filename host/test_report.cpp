#include "host/test_report.h"

#include <optional>

#include "host/progress.h"
#include "host/utf.h"

namespace host {

std::string CallModule(const Module& module, Test test, const std::string& contract, bool quiet) {
  std::optional<Progress> progress;
  if (!quiet) progress.emplace(test == Test::kPlay ? "playing" : "recording", LogFile());
  return module.Call(test, contract);
}

ExitCode ExitCodeOf(Test test, const Outcome& outcome) {
  return Passed(test, outcome) ? ExitCode::kPass : ExitCode::kFail;
}

Failure UnreadableReply() {
  return Failure(ExitCode::kBroken, "The module's reply isn't a data contract with an outcome.",
                 "Check with 'rmthost version' that this is the right module.");
}

JsonMembers OutcomeMembers(Test test, const Outcome& outcome, const std::string& reply) {
  const bool passed = Passed(test, outcome);
  return {{"passed", JsonBool(passed)},
          {"returnCode", std::to_string(outcome.returnCode)},
          {"returnMessage", JsonString(outcome.returnMessage)},
          {"advice", passed ? "null" : JsonString(AdviceFor(outcome))},
          {"log", JsonString(Utf8FromPath(LogFile()))},
          {"reply", reply}};
}

}  // namespace host
