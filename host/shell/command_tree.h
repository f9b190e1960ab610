#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace host {

// An option, or an argument that is known by its place.
struct CommandArgument {
  std::vector<std::string> names;  // "-n", "--runs"; of an argument none
  std::string value;               // what its value is called, as "FILE"; of a flag empty
  std::string description;
  bool isRequired = false;
};

// A command with what can follow it; the root stands for the program.
struct CommandTree {
  std::string path;  // as it is typed: "repeat play"; of the program empty
  std::string description;
  std::string footer;
  std::vector<CommandArgument> options, arguments;
  std::vector<CommandTree> commands;

  // The last word of the path.
  std::string Name() const { return path.substr(path.rfind(' ') + 1); }
};

// The command line that `app` describes, without what is hidden.
CommandTree ReadCommandTree(const CLI::App& app);

// Calls `visit` for a command and those below it, in their order.
template <class Visitor>
void ForEachCommand(const CommandTree& tree, Visitor&& visit) {
  visit(tree);
  for (const CommandTree& command : tree.commands) ForEachCommand(command, visit);
}

}  // namespace host
