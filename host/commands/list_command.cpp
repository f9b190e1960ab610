#include <fmt/core.h>

#include "host/base/json.h"
#include "host/commands/commands.h"
#include "host/endpoints/endpoints.h"
#include "host/endpoints/platform.h"
#include "text/utf.h"

namespace host {
namespace {

const char* Encoding(const platform::SampleFormat& format) { return format.isFloat ? "float" : "pcm"; }

std::string Details(const Endpoint& endpoint) {
  std::string details = endpoint.state == EndpointState::kNotPresent ? "not present" : Word(endpoint.state);
  if (endpoint.format.has_value()) {
    const platform::SampleFormat& format = *endpoint.format;
    details += fmt::format(", {} channel{}, {} Hz, {} bits {}", format.channels, format.channels == 1 ? "" : "s",
                           format.rate, format.bits, Encoding(format));
  }
  if (endpoint.levels.has_value()) details += ", volume " + LevelsText(*endpoint.levels);
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

Json FormatJson(const std::optional<platform::SampleFormat>& format) {
  if (!format.has_value()) return nullptr;
  return {
      {"channels", format->channels}, {"rate", format->rate}, {"bits", format->bits}, {"encoding", Encoding(*format)}};
}

Json EndpointJson(const Endpoint& endpoint) {
  return {{"id", endpoint.id},
          {"name", endpoint.name},
          {"flow", endpoint.flow},
          {"state", endpoint.state},
          {"default", endpoint.defaultFor},
          {"levels", endpoint.levels},
          {"muted", endpoint.muted},
          {"format", FormatJson(endpoint.format)}};
}

}  // namespace

CommandResult ListEndpoints(const Options& options) {
  const std::string description = ChoosePlatform(options.platform);
  const Platform platform(description);
  const std::vector<Endpoint> endpoints = ReadEndpoints();

  CommandResult result;
  result.text = "Render endpoints\n" + FlowText(endpoints, Flow::kRender) + "\nCapture endpoints\n" +
                FlowText(endpoints, Flow::kCapture) + "\n* is taken when no endpoint is named.\n";
  Json json = {{"platform", description}};
  json["endpoints"] = Json::array();
  for (const Endpoint& endpoint : endpoints) json["endpoints"].push_back(EndpointJson(endpoint));
  result.json = TextOf(json);
  return result;
}

}  // namespace host
