#pragma once

#include <optional>
#include <string>

#include "host/base/exit_codes.h"
#include "host/base/failure.h"

namespace host {

// A command's answer, ready to be shown either way. Made whole before anything is written, so that a failure midway
// never leaves half a document on standard output.
struct Answer {
  ExitCode exitCode = ExitCode::kPass;
  std::string text;                // for a person
  std::string result;              // the same as a JSON object, json_output.h; may be empty
  std::optional<Failure> failure;  // goes to standard error, or into the JSON document
  std::string notes;               // lines for standard error, when there is no JSON document
};

}  // namespace host
