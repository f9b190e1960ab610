#include "host/base/command_result.h"

#include <utility>

#include "host/base/json.h"

namespace host {

CommandResult TextResult(std::string text) {
  CommandResult result;
  result.json = TextOf({{"text", text}});
  result.text = std::move(text);
  return result;
}

std::string JsonDocument(const std::string& command, const CommandResult& result) {
  std::string document = TextOf({{"formatVersion", 3},
                                 {"command", command.empty() ? Json() : Json(command)},
                                 {"ok", result.exitCode == ExitCode::kPass},
                                 {"exitCode", result.exitCode}});
  if (!result.json.empty()) AppendMember(document, "result", result.json);
  if (!result.leftRuns.empty()) AppendMember(document, "leftRuns", result.leftRuns);
  if (result.failure.has_value()) AppendMember(document, "error", TextOf(*result.failure));
  return document + "\n";
}

}  // namespace host
