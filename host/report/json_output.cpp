#include "host/report/json_output.h"

#include <fmt/format.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cmath>
#include <iterator>

#include "text/utf.h"

namespace host {
std::string JsonString(std::string_view text) {
  const std::string valid = text::ValidUtf8(text);
  rapidjson::StringBuffer buffer;
  rapidjson::Writer<rapidjson::StringBuffer>(buffer).String(valid.data(),
                                                            static_cast<rapidjson::SizeType>(valid.size()));
  return {buffer.GetString(), buffer.GetSize()};
}

std::string JsonTextOrNull(std::string_view text) {
  return text.empty() ? "null" : JsonString(text);
}

std::string JsonNumber(double value) {
  return std::isfinite(value) ? fmt::to_string(value) : "null";
}

std::string JsonBool(bool value) {
  return value ? "true" : "false";
}

std::string JsonArray(const std::vector<std::string>& elements) {
  return fmt::format("[{}]", fmt::join(elements, ","));
}

std::string JsonObject(const JsonMembers& members) {
  std::string text = "{";
  for (const auto& [key, value] : members)
    text += fmt::format("{}{}:{}", text.size() > 1 ? "," : "", JsonString(key), value);
  return text + "}";
}

void Append(JsonMembers& members, JsonMembers more) {
  members.insert(members.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

std::string FailureJson(const Failure& failure) {
  std::vector<std::string> candidates;
  for (const Candidate& candidate : failure.candidates) {
    candidates.push_back(JsonObject({{"name", JsonString(candidate.name)}, {"id", JsonString(candidate.id)}}));
  }
  return JsonObject({{"message", JsonString(failure.message)},
                     {"advice", JsonString(failure.advice)},
                     {"exitCode", fmt::to_string(static_cast<int>(failure.exitCode))},
                     {"candidates", JsonArray(candidates)}});
}

std::string JsonDocument(const std::string& command, const Answer& answer) {
  JsonMembers members = {{"formatVersion", "1"},
                         {"command", command.empty() ? "null" : JsonString(command)},
                         {"ok", JsonBool(answer.exitCode == ExitCode::kPass)},
                         {"exitCode", fmt::to_string(static_cast<int>(answer.exitCode))}};
  if (!answer.result.empty()) members.emplace_back("result", answer.result);
  if (answer.failure.has_value()) members.emplace_back("error", FailureJson(*answer.failure));
  return JsonObject(members) + "\n";
}

}  // namespace host
