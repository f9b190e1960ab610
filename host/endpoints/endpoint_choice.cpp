#include "host/endpoints/endpoint_choice.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <iterator>

#include "host/base/failure.h"
#include "host/contract/parsed_contract.h"
#include "host/report/json_reading.h"
#include "text/utf.h"

namespace host {
namespace {

constexpr const char* kListAdvice = "'rmthost list' shows the endpoints.";

using Matches = std::vector<const Endpoint*>;

template <class Predicate>
Matches Where(const Matches& endpoints, Predicate predicate) {
  Matches kept;
  std::copy_if(endpoints.begin(), endpoints.end(), std::back_inserter(kept), predicate);
  return kept;
}

bool IsActive(const Endpoint* endpoint) {
  return endpoint->state == EndpointState::kActive;
}

bool Holds(const std::string& text, const std::string& lowerPiece) {
  return text::LowerAscii(text).find(lowerPiece) != std::string::npos;
}

// The matches of the first of the three ways of naming that gives any.
Matches BestMatches(const Matches& endpoints, const std::string& name) {
  const std::string wanted = text::LowerAscii(name);
  Matches found = Where(endpoints, [&](const Endpoint* e) { return text::LowerAscii(e->id) == wanted; });
  if (found.empty()) found = Where(endpoints, [&](const Endpoint* e) { return text::LowerAscii(e->name) == wanted; });
  if (found.empty()) {
    found = Where(endpoints, [&](const Endpoint* e) { return Holds(e->id, wanted) || Holds(e->name, wanted); });
  }
  return found;
}

[[noreturn]] void RefuseInactive(const Endpoint& endpoint) {
  switch (endpoint.state) {
    case EndpointState::kDisabled:
      throw Failure(ExitCode::kNoEndpoint, fmt::format("The endpoint '{}' is disabled.", endpoint.name),
                    "Enable it in the system's sound settings, or choose another: 'rmthost list' shows the endpoints.");
    case EndpointState::kUnplugged:
      throw Failure(ExitCode::kNoEndpoint, fmt::format("The endpoint '{}' is unplugged.", endpoint.name),
                    "Plug it in, or choose another: 'rmthost list' shows the endpoints.");
    default:
      throw Failure(ExitCode::kNoEndpoint, fmt::format("The endpoint '{}' is not present.", endpoint.name),
                    "Connect its device, or choose another: 'rmthost list' shows the endpoints.");
  }
}

[[noreturn]] void RefuseAmbiguous(const std::string& name, Flow flow, const Matches& matches) {
  std::vector<Candidate> candidates;
  for (const Endpoint* match : matches) candidates.push_back({match->name, match->id});
  throw Failure(ExitCode::kNoEndpoint,
                fmt::format("'{}' can mean any of {} {} endpoints:", name, matches.size(), FlowWord(flow)),
                "Name one of them by its id.", std::move(candidates));
}

// That can be another endpoint than the one with exactly this id, and the module's answer would then be about the wrong
// one.
void RequireReachable(const std::vector<Endpoint>& endpoints, const Endpoint& chosen) {
  const Endpoint* reached = ReachedEndpoint(endpoints, chosen.flow, chosen.id);
  if (reached == &chosen) return;
  throw Failure(ExitCode::kNoEndpoint,
                fmt::format("The module can't reach '{}': it would test '{}', whose id is a part of the other's id.",
                            chosen.name, reached->name),
                fmt::format("Disable '{}' in the system's sound settings, and try again.", reached->name));
}

}  // namespace

const Endpoint& ChooseEndpoint(const std::vector<Endpoint>& endpoints, Flow flow,
                               const std::optional<std::string>& name) {
  if (name.has_value() && name->empty()) {
    throw Failure(ExitCode::kBadInput, fmt::format("The name of the {} endpoint is empty.", FlowWord(flow)),
                  kListAdvice);
  }
  Matches all;
  for (const Endpoint& endpoint : endpoints) all.push_back(&endpoint);
  const Matches sameFlow = Where(all, [&](const Endpoint* e) { return e->flow == flow; });

  Matches matches;
  if (name.has_value()) {
    matches = BestMatches(sameFlow, *name);
    if (matches.empty()) {
      const Matches others = BestMatches(all, *name);
      throw Failure(ExitCode::kNoEndpoint,
                    others.empty() ? fmt::format("No endpoint is called '{}'.", *name)
                                   : fmt::format("'{}' is no {} endpoint: '{}' is a {} endpoint.", *name,
                                                 FlowWord(flow), others.front()->name, FlowWord(others.front()->flow)),
                    kListAdvice);
    }
  } else {
    matches = Where(sameFlow, [](const Endpoint* e) {
      return std::find(e->defaultFor.begin(), e->defaultFor.end(), "console") != e->defaultFor.end();
    });
    if (matches.empty()) {
      throw Failure(ExitCode::kNoEndpoint, fmt::format("This system has no default {} endpoint.", FlowWord(flow)),
                    "Name the endpoint: 'rmthost list' shows the endpoints.");
    }
  }
  const Matches active = Where(matches, IsActive);
  if (active.size() > 1) RefuseAmbiguous(*name, flow, active);
  if (active.empty() && matches.size() > 1) RefuseAmbiguous(*name, flow, matches);
  if (active.empty()) RefuseInactive(*matches.front());
  RequireReachable(endpoints, *active.front());
  return *active.front();
}

const Endpoint* ReachedEndpoint(const std::vector<Endpoint>& endpoints, Flow flow, const std::string& wanted) {
  const auto reached = std::find_if(endpoints.begin(), endpoints.end(), [&](const Endpoint& endpoint) {
    return endpoint.flow == flow && IsActive(&endpoint) && Holds(wanted, text::LowerAscii(endpoint.id));
  });
  return reached != endpoints.end() ? &*reached : nullptr;
}

std::vector<Endpoint> TestedEndpoints(const std::vector<Endpoint>& endpoints, Test test, const std::string& contract) {
  const ParsedContract parsed(contract);
  const rapidjson::Value* device = FindMember(parsed.CoreData(), "DeviceInfo");
  std::vector<Endpoint> tested;
  const auto add = [&](Flow flow, const rapidjson::Value* object, const char* key) {
    const Endpoint* reached = object != nullptr ? ReachedEndpoint(endpoints, flow, TextIn(*object, key)) : nullptr;
    if (reached != nullptr) tested.push_back(*reached);
  };
  add(test == Test::kPlay ? Flow::kRender : Flow::kCapture, device, "DeviceInstanceID");
  if (test == Test::kRecord) add(Flow::kRender, FindMember(device, "AudioData"), "targetDevice");
  return tested;
}

}  // namespace host
