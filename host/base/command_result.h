#pragma once

#include <optional>
#include <string>
#include <tuple>

#include "host/base/exit_codes.h"
#include "host/base/failure.h"
#include "host/base/member.h"

namespace host {

// What came of a command, ready to be shown either way. Made whole before anything is written, so that a failure midway
// never leaves half a document on standard output.
struct CommandResult {
  ExitCode exitCode = ExitCode::kPass;
  std::string text;                // for a person
  std::string json;                // the same as the text of a JSON object; may be empty
  std::optional<Failure> failure;  // goes to standard error, or into the JSON document
  std::string notes;               // lines for standard error, when there is no JSON document
  std::string leftRuns;            // the text of a JSON array: what was put back first of runs before; may be empty

  static constexpr auto Members() {
    return std::tuple(Member("exitCode", &CommandResult::exitCode), Member("text", &CommandResult::text),
                      Member("json", &CommandResult::json), Member("failure", &CommandResult::failure));
  }
};

// The result of a command that prints a text and nothing else.
CommandResult TextResult(std::string text);

// The document that --json writes to standard output, as docs/rmthost-json.md describes it, with its line feed. An
// empty `command` is written as null.
std::string JsonDocument(const std::string& command, const CommandResult& result);

}  // namespace host
