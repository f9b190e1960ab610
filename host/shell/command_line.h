#pragma once

#include <array>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "host/commands/commands.h"

namespace CLI {
class App;
}

namespace host {

// What the arguments TEST and SHELL can be.
inline constexpr std::array kTestWords{"play", "record"};
inline constexpr std::array kShellWords{"bash", "zsh", "fish"};
// What --color can be, in the order of Colour.
inline constexpr std::array<std::string_view, 3> kColourWords{"auto", "always", "never"};

// Describes the whole command line to `app`, which fills `options` when it parses. Both must live as long as it is
// used.
void BuildCommandLine(CLI::App& app, Options& options);

struct HelpText {
  std::string text;
};

// What the arguments ask for: a command, or the help. Throws Failure for a command line that can't be used.
std::variant<Options, HelpText> ParseCommandLine(std::vector<std::string> arguments);

// Whether --json or --quiet is among the arguments: also known when the command line as a whole can't be used.
bool HasFlag(const std::vector<std::string>& arguments, const std::string& flag);

// The command as it is typed, such as "list".
const char* CommandWord(Options::Command command);

}  // namespace host
