#pragma once

#include <string>
#include <variant>
#include <vector>

#include "host/commands.h"

namespace host {

struct HelpText {
  std::string text;
};

// What the arguments ask for: a command, or the help. Throws Failure for a command line that can't be used.
std::variant<Options, HelpText> ParseCommandLine(std::vector<std::string> arguments);

// Whether --json or --quiet is among the arguments: also known when the command line as a whole can't be used.
bool HasFlag(const std::vector<std::string>& arguments, const std::string& flag);

// "list", "play", "record", "run", "check" or "version".
const char* CommandWord(Options::Command command);

}  // namespace host
