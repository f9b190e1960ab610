#pragma once

#include <string>

#include "host/base/failure.h"

namespace CLI {
class App;
class ParseError;
}  // namespace CLI

namespace host {

// What to tell about a command line that `app` could not parse: an unknown command or option with the one that was
// probably meant, anything else in the words of `error`.
Failure UnusableCommandLine(const CLI::App& app, const CLI::ParseError& error);

// The same for the name of a command that `parent` doesn't have. `path` are the commands before it, each with a space
// behind it.
Failure UnknownCommand(const CLI::App& parent, const std::string& path, const std::string& name);

}  // namespace host
