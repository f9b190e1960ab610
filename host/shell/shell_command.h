#pragma once

#include "host/commands/commands.h"

namespace host {

// The commands that show the command line's own description, command_line.h.
CommandResult ShowCompletion(const Options& options);
CommandResult ShowManPage();

}  // namespace host
