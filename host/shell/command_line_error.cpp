#include "host/shell/command_line_error.h"

#include <fmt/core.h>

#include <CLI/CLI.hpp>

#include "host/base/near_word.h"

namespace host {
namespace {

constexpr const char* kHelpAdvice = "'rmthost --help' shows the commands and options.";

// Of a command and of those around it, as they are typed.
std::vector<std::string> OptionsOf(const CLI::App* command) {
  std::vector<std::string> names;
  for (; command != nullptr; command = command->get_parent()) {
    for (const CLI::Option* option : command->get_options()) {
      for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
      for (const std::string& name : option->get_snames()) names.push_back("-" + name);
    }
  }
  return names;
}

Failure UnknownOption(const CLI::App& command, const std::string& path, const std::string& word) {
  const std::string name = word.substr(0, word.find('='));
  const std::string owner = path.empty() ? "" : fmt::format(" of '{}'", path.substr(0, path.size() - 1));
  const std::string nearest = NearestWord(name, OptionsOf(&command));
  // It was typed in front of the command that has it.
  if (nearest == name) {
    return {ExitCode::kBadInput, fmt::format("The option '{}'{} must stand behind the command.", name, owner),
            kHelpAdvice};
  }
  return {ExitCode::kBadInput,
          fmt::format("There is no option '{}'{}{}", name, owner,
                      nearest.empty() ? "." : fmt::format("; did you mean '{}'?", nearest)),
          kHelpAdvice};
}

}  // namespace

Failure UnusableCommandLine(const CLI::App& app, const CLI::ParseError& error) {
  const CLI::App* command = &app;
  std::string path;
  while (!command->get_subcommands().empty()) {
    command = command->get_subcommands().front();
    path += command->get_name() + " ";
  }
  const std::vector<std::string> unexpected = app.remaining(true);
  if (!unexpected.empty() && unexpected.front().starts_with('-')) {
    return UnknownOption(*command, path, unexpected.front());
  }
  const bool hasCommands = !command->get_subcommands([](const CLI::App*) { return true; }).empty();
  if (!unexpected.empty() && hasCommands) return UnknownCommand(*command, path, unexpected.front());
  return {ExitCode::kBadInput, std::string("The command line can't be used: ") + error.what() + ".", kHelpAdvice};
}

Failure UnknownCommand(const CLI::App& parent, const std::string& path, const std::string& name) {
  std::vector<std::string> names;
  for (const CLI::App* command : parent.get_subcommands([](const CLI::App*) { return true; })) {
    names.push_back(command->get_name());
  }
  const std::string nearest = NearestWord(name, names);
  return {ExitCode::kBadInput,
          fmt::format("There is no command '{}{}'{}", path, name,
                      nearest.empty() ? "." : fmt::format("; did you mean '{}{}'?", path, nearest)),
          kHelpAdvice};
}

}  // namespace host
