#include "host/shell/completion.h"

#include <fmt/format.h>

#include <set>

#include "host/endpoints/platform.h"
#include "host/shell/completion_words.h"

namespace host {

std::string KindOf(const std::string& value) {
  if (value == "ENDPOINT") return "render";
  if (value == "CAPTURE") return "capture";
  if (value == "FILE" || value == "CONTRACT") return "file";
  if (value == "NAME") return "platform";
  if (value == "TEST") return "play record";
  if (value == "SHELL") return "bash zsh fish";
  return "none";
}

std::string PlatformWords() {
  return fmt::format("auto {} virtual virtual:", kSystemPlatform);
}

std::string ShortDescription(const std::string& description) {
  return description.substr(0, description.find_first_of(";:\n"));
}

std::string ValueOptions(const CommandTree& tree) {
  std::set<std::string> names;
  ForEachCommand(tree, [&](const CommandTree& command) {
    for (const CommandArgument& option : command.options) {
      if (!option.value.empty()) names.insert(option.names.begin(), option.names.end());
    }
  });
  return fmt::format("{}", fmt::join(names, " "));
}

std::string Joined(const std::vector<std::string>& names) {
  return fmt::format("{}", fmt::join(names, " "));
}

std::string ShellQuoted(std::string_view text) {
  std::string quoted = "'";
  for (const char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

std::string CompletionScript(const CLI::App& app, Shell shell) {
  const CommandTree tree = ReadCommandTree(app);
  switch (shell) {
    case Shell::kBash:
      return BashScript(tree);
    case Shell::kZsh:
      return ZshScript(tree);
    case Shell::kFish:
      break;
  }
  return FishScript(tree);
}

}  // namespace host
