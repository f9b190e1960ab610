#include "host/shell/command_tree.h"

#include <CLI/CLI.hpp>

namespace host {
namespace {

CommandArgument ArgumentOf(const CLI::Option& option) {
  CommandArgument argument{
      .names = {}, .value = {}, .description = option.get_description(), .isRequired = option.get_required()};
  for (const std::string& name : option.get_snames()) argument.names.push_back("-" + name);
  for (const std::string& name : option.get_lnames()) argument.names.push_back("--" + name);
  if (option.get_positional()) {
    argument.value = option.get_name();
  } else if (option.get_items_expected_max() > 0) {
    argument.value = option.get_option_text();
  }
  return argument;
}

CommandTree Read(const CLI::App& app, const std::string& path) {
  CommandTree tree{.path = path,
                   .description = app.get_description(),
                   .footer = app.get_footer(),
                   .options = {},
                   .arguments = {},
                   .commands = {}};
  for (const CLI::Option* option : app.get_options()) {
    if (option->get_group().empty()) continue;
    (option->get_positional() ? tree.arguments : tree.options).push_back(ArgumentOf(*option));
  }
  for (const CLI::App* command : app.get_subcommands([](const CLI::App* any) { return !any->get_group().empty(); })) {
    tree.commands.push_back(Read(*command, path + (path.empty() ? "" : " ") + command->get_name()));
  }
  return tree;
}

}  // namespace

CommandTree ReadCommandTree(const CLI::App& app) {
  return Read(app, "");
}

}  // namespace host
