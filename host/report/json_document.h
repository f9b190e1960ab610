#pragma once

#include <string>

#include "host/base/command_result.h"

namespace host {

// The document that --json writes to standard output, as docs/rmthost-json.md describes it, with its line feed. An
// empty `command` is written as null.
std::string JsonDocument(const std::string& command, const CommandResult& result);

}  // namespace host
