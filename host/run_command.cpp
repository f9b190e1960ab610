#include "host/commands.h"
#include "host/contract_file.h"
#include "host/json_output.h"
#include "host/platform.h"
#include "host/test_report.h"
#include "host/utf.h"

namespace host {

Answer RunContract(const Options& options, const Style& style) {
  const std::string contract = ReadContract(options.contract);
  const Platform platform(options.platform);
  const Module module(options.module ? PathFromUtf8(*options.module) : DefaultModuleFile());
  const std::string reply = CallModule(module, options.test, contract, options.quiet);
  const std::optional<Outcome> outcome = ReadReply(reply);

  Answer answer;
  answer.text = reply;
  if (style.terminal) answer.text += '\n';
  if (outcome.has_value()) {
    answer.exitCode = ExitCodeOf(options.test, *outcome);
    JsonMembers members = OutcomeMembers(options.test, *outcome, reply);
    members.emplace_back("test", JsonString(options.test == Test::kPlay ? "play" : "record"));
    answer.result = JsonObject(members);
  } else {
    answer.failure = UnreadableReply();
  }
  // The module answers any text; what is wrong with this one, only the host says.
  if (const std::optional<JsonFault> fault = FindJsonFault(contract)) {
    answer.failure = NotJson(options.contract, *fault,
                             "Correct it there; the module's answer to it as it is was given all the same.");
  }
  if (answer.failure.has_value()) answer.exitCode = answer.failure->exitCode;
  return answer;
}

}  // namespace host
