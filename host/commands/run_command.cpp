#include <cstdio>

#include "host/base/system.h"
#include "host/commands/commands.h"
#include "host/commands/guarded_run.h"
#include "host/contract/contract_file.h"
#include "host/endpoints/platform.h"
#include "host/report/run_json.h"
#include "host/report/run_text.h"

namespace host {

CommandResult RunContract(const Options& options) {
  const std::string contract = ReadContract(options.contract);
  const std::string platform = ChoosePlatform(options.platform);
  const Interruption interruption;
  RunRecord run;
  run.test = options.test;
  RunModule(
      {.platform = platform, .module = ModuleFile(options), .test = options.test, .contract = contract, .listenTo = {}},
      options, interruption, {.label = options.test == Test::kPlay ? "playing" : "recording"}, run);

  CommandResult result;
  if (run.call.reply.has_value()) result.text = *run.call.reply + (IsTerminal(stdout) ? "\n" : "");
  Conclude(run, result);
  result.json = ContractRunJson(platform, run);
  result.notes += LogText(run);
  // The reply is alone on standard output, so there is nothing to say when all is as it was.
  const Restoration& restored = run.call.restored;
  if (run.failure.has_value() || !restored.FoundAllAsBefore()) result.notes += RestorationText(restored) + "\n";
  // The module answers any text; what is wrong with this one, only the host says.
  const std::optional<JsonFault> fault = ParsedContract(contract).Fault();
  if (fault.has_value() && run.call.reply.has_value() && result.exitCode != ExitCode::kNotRestored) {
    result.failure = NotJson(options.contract, *fault,
                             "Correct it there; the module's answer to it as it is was given all the same.");
    result.exitCode = result.failure->exitCode;
  }
  return result;
}

}  // namespace host
