#include <CLI/CLI.hpp>

#include "host/commands/commands.h"
#include "host/report/json_output.h"
#include "host/shell/command_line.h"
#include "host/shell/completion.h"
#include "host/shell/man_page.h"

namespace host {
namespace {

Shell ShellCalled(const std::string& name) {
  if (name == "bash") return Shell::kBash;
  return name == "zsh" ? Shell::kZsh : Shell::kFish;
}

Answer AnswerOf(std::string text) {
  Answer answer;
  answer.result = JsonObject({{"text", JsonString(text)}});
  answer.text = std::move(text);
  return answer;
}

}  // namespace

Answer ShowCompletion(const Options& options) {
  CLI::App app;
  Options described;
  BuildCommandLine(app, described);
  return AnswerOf(CompletionScript(app, ShellCalled(options.shell)));
}

Answer ShowManPage() {
  CLI::App app;
  Options described;
  BuildCommandLine(app, described);
  return AnswerOf(ManPage(app));
}

}  // namespace host
