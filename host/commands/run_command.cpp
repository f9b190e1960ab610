#include "host/commands/commands.h"
#include "host/commands/test_report.h"
#include "host/contract/contract_file.h"
#include "host/report/json_output.h"

namespace host {

Answer RunContract(const Options& options, const Style& style) {
  const std::string contract = ReadContract(options.contract);
  const PlatformChoice platform = ChosenPlatform(options);
  const Interruption interruption;
  const TestCall call =
      CallModule({.platform = platform.used,
                  .module = ModuleFile(options),
                  .test = options.test,
                  .contract = contract,
                  .listenTo = ""},
                 options, interruption, {.label = options.test == Test::kPlay ? "playing" : "recording"});

  Answer answer;
  const CallReport& report = call.guarded.report;
  if (report.reply.has_value()) answer.text = *report.reply + (style.terminal ? "\n" : "");
  const bool passed = call.outcome.has_value() && Passed(options.test, *call.outcome);
  Conclude(answer, call, passed ? ExitCode::kPass : ExitCode::kFail);
  JsonMembers members = PlatformMembers(platform);
  members.emplace_back("test", JsonString(TestWord(options.test)));
  if (call.outcome.has_value()) Append(members, OutcomeMembers(options.test, *call.outcome));
  Append(members, CallMembers(call, options));
  Append(members, ReplyMembers(call));
  answer.result = JsonObject(members);
  answer.notes += LogText(call, options);
  // The reply is alone on standard output, so there is nothing to say when all is as it was.
  const Restoration& restoration = call.guarded.restoration;
  if (call.failure.has_value() || !restoration.FoundAllAsBefore()) answer.notes += RestorationText(restoration) + "\n";
  // The module answers any text; what is wrong with this one, only the host says.
  const std::optional<JsonFault> fault = FindJsonFault(contract);
  if (fault.has_value() && report.reply.has_value() && answer.exitCode != ExitCode::kNotRestored) {
    answer.failure = NotJson(options.contract, *fault,
                             "Correct it there; the module's answer to it as it is was given all the same.");
    answer.exitCode = answer.failure->exitCode;
  }
  return answer;
}

}  // namespace host
