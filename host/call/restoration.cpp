#include "host/call/restoration.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

#include "host/endpoints/endpoint_volume.h"
#include "host/report/json_output.h"
#include "host/report/json_reading.h"
#include "text/utf.h"

namespace host {
namespace {

using State = Restoration::State;

const char* StateText(State state) {
  switch (state) {
    case State::kYes:
      return "yes";
    case State::kNo:
      return "no";
    case State::kUnknown:
      return "unknown";
    case State::kNotNeeded:
      break;
  }
  return "not needed";
}

EndpointRestoration Known(const Endpoint& saved) {
  EndpointRestoration known;
  known.id = saved.id;
  known.name = saved.name;
  if (saved.levels.empty()) {
    known.unknown.emplace_back("levels");
  } else {
    known.before = fmt::format("levels {}", fmt::join(saved.levels, " "));
  }
  if (!saved.muted.has_value()) known.unknown.emplace_back("mute");
  if (saved.muted.value_or(false)) known.before += known.before.empty() ? "muted" : ", muted";
  return known;
}

EndpointRestoration PutBack(const Endpoint& saved) {
  EndpointRestoration done = Known(saved);
  if (done.unknown.size() == 2) return done;

  const std::optional<EndpointVolume> volume = EndpointVolume::Of(saved.flow, saved.id);
  if (!volume.has_value()) {
    done.error = "the endpoint is not there any more, or the audio system doesn't answer";
    return done;
  }
  const auto isMuteBack = [&] { return !saved.muted.has_value() || volume->Muted() == saved.muted; };
  // To the last bit: a level that went through the module's floats comes back as it was.
  const auto areLevelsBack = [&] { return saved.levels.empty() || volume->Levels() == saved.levels; };
  std::vector<std::string> refused;
  if (!isMuteBack()) (volume->SetMuted(*saved.muted) && isMuteBack() ? done.putBack : refused).emplace_back("mute");
  if (!areLevelsBack()) {
    (volume->SetLevels(saved.levels) && areLevelsBack() ? done.putBack : refused).emplace_back("levels");
  }
  if (!refused.empty()) done.error = fmt::format("the audio system doesn't take its {}", fmt::join(refused, " and "));
  return done;
}

std::string TextsJson(const std::vector<std::string>& texts) {
  std::vector<std::string> elements;
  std::transform(texts.begin(), texts.end(), std::back_inserter(elements), JsonString);
  return JsonArray(elements);
}

std::vector<std::string> TextsIn(const rapidjson::Value& object, const char* key) {
  std::vector<std::string> texts;
  for (const rapidjson::Value& element : ListIn(object, key)) {
    if (element.IsString()) texts.emplace_back(element.GetString(), element.GetStringLength());
  }
  return texts;
}

}  // namespace

State Restoration::Summary() const {
  if (!notNeeded.empty()) return State::kNotNeeded;
  const auto any = [this](auto predicate) { return std::any_of(endpoints.begin(), endpoints.end(), predicate); };
  if (any([](const EndpointRestoration& endpoint) { return !endpoint.error.empty(); })) return State::kNo;
  if (any([](const EndpointRestoration& endpoint) { return !endpoint.unknown.empty(); })) return State::kUnknown;
  return State::kYes;
}

bool Restoration::FoundAllAsBefore() const {
  return std::all_of(endpoints.begin(), endpoints.end(), [](const EndpointRestoration& endpoint) {
    return endpoint.putBack.empty() && endpoint.unknown.empty() && endpoint.error.empty();
  });
}

Restoration PutBack(const std::vector<Endpoint>& saved) {
  Restoration restoration;
  if (saved.empty()) restoration.notNeeded = "the contract names no active endpoint";
  for (const Endpoint& endpoint : saved) restoration.endpoints.push_back(PutBack(endpoint));
  return restoration;
}

Restoration FailedRestoration(const std::vector<Endpoint>& saved, const std::string& error) {
  Restoration restoration;
  for (const Endpoint& endpoint : saved) {
    EndpointRestoration& failed = restoration.endpoints.emplace_back(Known(endpoint));
    // Where nothing was known, nothing was to be put back.
    if (failed.unknown.size() < 2) failed.error = error;
  }
  return restoration;
}

std::string RestorationText(const Restoration& restoration) {
  const State state = restoration.Summary();
  std::string text = fmt::format("restored: {}", StateText(state));
  if (state == State::kNotNeeded) text += ", " + restoration.notNeeded;
  for (const EndpointRestoration& endpoint : restoration.endpoints) {
    const auto tell = [&](const std::string& what) { text += fmt::format("; '{}': {}", endpoint.name, what); };
    if (!endpoint.error.empty()) tell(endpoint.error);
    if (!endpoint.error.empty() && !endpoint.before.empty()) text += ", and it had " + endpoint.before;
    if (!endpoint.putBack.empty()) tell(fmt::format("{} put back", fmt::join(endpoint.putBack, " and ")));
    if (!endpoint.unknown.empty()) tell(fmt::format("{} unknown", fmt::join(endpoint.unknown, " and ")));
  }
  return text::Printable(text);
}

std::string RestorationJson(const Restoration& restoration) {
  std::vector<std::string> endpoints;
  for (const EndpointRestoration& endpoint : restoration.endpoints) {
    endpoints.push_back(JsonObject({{"id", JsonString(endpoint.id)},
                                    {"name", JsonString(endpoint.name)},
                                    {"before", JsonTextOrNull(endpoint.before)},
                                    {"putBack", TextsJson(endpoint.putBack)},
                                    {"unknown", TextsJson(endpoint.unknown)},
                                    {"error", JsonTextOrNull(endpoint.error)}}));
  }
  return JsonObject({{"state", JsonString(StateText(restoration.Summary()))},
                     {"notNeeded", JsonTextOrNull(restoration.notNeeded)},
                     {"endpoints", JsonArray(endpoints)}});
}

Restoration ReadRestoration(const rapidjson::Value& object) {
  Restoration restoration;
  restoration.notNeeded = TextIn(object, "notNeeded");
  for (const rapidjson::Value& element : ListIn(object, "endpoints")) {
    restoration.endpoints.push_back({.id = TextIn(element, "id"),
                                     .name = TextIn(element, "name"),
                                     .before = TextIn(element, "before"),
                                     .putBack = TextsIn(element, "putBack"),
                                     .unknown = TextsIn(element, "unknown"),
                                     .error = TextIn(element, "error")});
  }
  return restoration;
}

}  // namespace host
