// rmthost: loads the test module as any host does, and shows people and scripts what it says.
#include <cstdio>
#include <exception>

#include "host/base/system.h"
#include "host/call/module_messages.h"
#include "host/restoring/guardian.h"
#include "host/shell/command_line.h"
#include "host/shell/completion.h"
#include "text/utf.h"

namespace {

using namespace host;

CommandResult CarryOut(const Options& options) {
  const Style style = Style::Of(stdout, options.colour);
  switch (options.command) {
    case Options::Command::kList: return ListEndpoints(options);
    case Options::Command::kPlay:
    case Options::Command::kRecord: return PlayOrRecord(options, style);
    case Options::Command::kRepeat: return RepeatRuns(options, style);
    case Options::Command::kRun: return RunContract(options);
    case Options::Command::kCheck: return CheckContract(options);
    case Options::Command::kLimits: return ShowLimits(options);
    case Options::Command::kRestore: return RestoreSettings(options);
    case Options::Command::kVersion: return ShowVersion(options);
    case Options::Command::kCompletion: break;
  }
  return TextResult(CompletionScript(options.shell));
}

// Whether the command looks at endpoints.
bool NeedsSettings(Options::Command command) {
  using Command = Options::Command;
  return command == Command::kList || command == Command::kPlay || command == Command::kRecord ||
         command == Command::kRepeat || command == Command::kRun;
}

CommandResult ResultOf(const std::vector<std::string>& arguments, std::string& command) {
  CommandResult result, before;
  try {
    const std::variant<Options, HelpText> asked = ParseCommandLine(arguments);
    if (const HelpText* help = std::get_if<HelpText>(&asked)) {
      command = "help";
      return TextResult(help->text);
    }
    const Options& options = std::get<Options>(asked);
    command = CommandWord(options.command);
    if (NeedsSettings(options.command)) before = PutBackLeftSettings(options);
    result = CarryOut(options);
  } catch (const Failure& failure) {
    result.failure = failure;
  } catch (const std::exception& error) {
    result.failure = Failure(ExitCode::kBroken, std::string("rmthost can't go on: ") + error.what() + ".",
                             "Try again; if it stays, report it with what was typed.");
  }
  if (result.failure.has_value() && result.exitCode == ExitCode::kPass) result.exitCode = result.failure->exitCode;
  result.notes = before.notes + result.notes;
  result.leftRuns = before.json;
  return result;
}

// Whether all of it arrived.
bool Print(const std::string& text) {
  return std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
}

int Serve() {
  try {
    ServeModuleRequest();
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "rmthost: The module's process can't go on: %s\n", text::Printable(error.what()).c_str());
    return 1;
  }
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> arguments = Arguments(argc, argv);
  if (arguments == std::vector<std::string>{kModuleProcess}) return Serve();
  if (arguments == std::vector<std::string>{kGuardianProcess}) return ServeAsGuardian();
  if (!arguments.empty() && arguments.front() == kCompleteWord) {
    Print(Candidates({arguments.begin() + 1, arguments.end()}));
    return 0;
  }
  const bool json = HasFlag(arguments, "--json");
  const bool quiet = HasFlag(arguments, "--quiet");

  std::string command;
  CommandResult result = ResultOf(arguments, command);
  const std::string output = json ? JsonDocument(command, result) : (quiet ? std::string() : result.text);
  if (!Print(output)) {
    const Failure unwritten(ExitCode::kBroken, "The answer could not be written to standard output.",
                            "Check where standard output goes.");
    std::fputs(FailureText(unwritten, Style::Of(stderr)).c_str(), stderr);
    // A closed terminal is what may have interrupted it.
    if (result.exitCode != ExitCode::kInterrupted) result.exitCode = ExitCode::kBroken;
  }
  if (result.failure.has_value() && !json) {
    std::fputs(FailureText(*result.failure, Style::Of(stderr)).c_str(), stderr);
  }
  if (!json && (!quiet || result.failure.has_value())) std::fputs(result.notes.c_str(), stderr);
  return static_cast<int>(result.exitCode);
}
