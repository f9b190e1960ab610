#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "host/commands/commands.h"
#include "host/commands/test_report.h"
#include "host/endpoints/endpoints.h"
#include "host/endpoints/platform.h"
#include "host/report/json_output.h"
#include "text/utf.h"

namespace host {
namespace {

bool IsDefaultFor(const Endpoint& endpoint, const char* role) {
  return std::find(endpoint.defaultFor.begin(), endpoint.defaultFor.end(), role) != endpoint.defaultFor.end();
}

std::string Details(const Endpoint& endpoint) {
  std::string details = endpoint.state == EndpointState::kNotPresent ? "not present" : StateWord(endpoint.state);
  if (endpoint.format.has_value()) {
    const DeviceFormat& format = *endpoint.format;
    details += fmt::format(", {} channel{}, {} Hz, {} bits {}", format.channels, format.channels == 1 ? "" : "s",
                           format.rate, format.bits, format.encoding);
  }
  if (!endpoint.levels.empty()) {
    details += ", volume";
    for (const float level : endpoint.levels) details += fmt::format(" {}%", std::lround(level * 100));
  }
  if (endpoint.muted.value_or(false)) details += ", muted";
  if (IsDefaultFor(endpoint, "communications")) details += ", default for communications";
  return details;
}

std::string FlowText(const std::vector<Endpoint>& endpoints, Flow flow) {
  std::string text;
  for (const Endpoint& endpoint : endpoints) {
    if (endpoint.flow != flow) continue;
    text += fmt::format("\n{} {}\n    {}\n    {}\n", IsDefaultFor(endpoint, "console") ? '*' : ' ',
                        endpoint.name.empty() ? "(no name)" : text::Printable(endpoint.name),
                        text::Printable(endpoint.id), Details(endpoint));
  }
  return text.empty() ? "\n  none\n" : text;
}

std::string LevelsJson(const Endpoint& endpoint) {
  std::vector<std::string> levels;
  for (const float level : endpoint.levels) levels.push_back(JsonNumber(level));
  return levels.empty() ? "null" : JsonArray(levels);
}

std::string FormatJson(const std::optional<DeviceFormat>& format) {
  if (!format.has_value()) return "null";
  return JsonObject({{"channels", fmt::to_string(format->channels)},
                     {"rate", fmt::to_string(format->rate)},
                     {"bits", fmt::to_string(format->bits)},
                     {"encoding", JsonString(format->encoding)}});
}

std::string EndpointJson(const Endpoint& endpoint) {
  std::vector<std::string> roles;
  for (const std::string& role : endpoint.defaultFor) roles.push_back(JsonString(role));
  return JsonObject({{"id", JsonString(endpoint.id)},
                     {"name", JsonString(endpoint.name)},
                     {"flow", JsonString(FlowWord(endpoint.flow))},
                     {"state", JsonString(StateWord(endpoint.state))},
                     {"default", JsonArray(roles)},
                     {"levels", LevelsJson(endpoint)},
                     {"muted", endpoint.muted.has_value() ? JsonBool(*endpoint.muted) : "null"},
                     {"format", FormatJson(endpoint.format)}});
}

// The id and the name of each active endpoint, with a tab between them, on a line.
std::string NamesText(const std::vector<Endpoint>& endpoints, const std::string& flow) {
  std::string text;
  for (const Endpoint& endpoint : endpoints) {
    if (endpoint.state != EndpointState::kActive || flow != FlowWord(endpoint.flow)) continue;
    text += text::Printable(endpoint.id) + "\t" + text::Printable(endpoint.name) + "\n";
  }
  return text;
}

}  // namespace

Answer ListEndpoints(const Options& options) {
  const PlatformChoice choice = ChosenPlatform(options);
  const Platform platform(choice.used);
  const std::vector<Endpoint> endpoints = ReadEndpoints();

  Answer answer;
  answer.text = "Render endpoints\n" + FlowText(endpoints, Flow::kRender) + "\nCapture endpoints\n" +
                FlowText(endpoints, Flow::kCapture) + "\n* is taken when no endpoint is named.\n";
  if (!options.names.empty()) answer.text = NamesText(endpoints, options.names);
  std::vector<std::string> listed;
  for (const Endpoint& endpoint : endpoints) listed.push_back(EndpointJson(endpoint));
  JsonMembers members = PlatformMembers(choice);
  members.emplace_back("endpoints", JsonArray(listed));
  answer.result = JsonObject(members);
  return answer;
}

}  // namespace host
