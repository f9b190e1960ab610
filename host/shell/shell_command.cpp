#include "host/shell/shell_command.h"

#include <CLI/CLI.hpp>

#include "host/shell/command_line.h"
#include "host/shell/completion.h"
#include "host/shell/man_page.h"

namespace host {
namespace {

Shell ShellCalled(const std::string& name) {
  if (name == "bash") return Shell::kBash;
  return name == "zsh" ? Shell::kZsh : Shell::kFish;
}

}  // namespace

CommandResult ShowCompletion(const Options& options) {
  CLI::App app;
  Options described;
  BuildCommandLine(app, described);
  return TextResult(CompletionScript(app, ShellCalled(options.shell)));
}

CommandResult ShowManPage() {
  CLI::App app;
  Options described;
  BuildCommandLine(app, described);
  return TextResult(ManPage(app));
}

}  // namespace host
