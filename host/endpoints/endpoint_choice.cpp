#include "host/endpoints/endpoint_choice.h"

#include <fmt/core.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include "host/base/failure.h"
#include "text/fold_case.h"
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

bool IsActive(const Endpoint* endpoint) { return endpoint->state == EndpointState::kActive; }

bool Holds(const std::string& text, const std::string& piece) { return text.find(piece) != std::string::npos; }

// The matches of the first of the three ways of naming that gives any.
Matches BestMatches(const Matches& endpoints, const std::string& name) {
  const std::string wanted = text::FoldCase(name);
  Matches found = Where(endpoints, [&](const Endpoint* e) { return text::FoldCase(e->id) == wanted; });
  if (found.empty()) found = Where(endpoints, [&](const Endpoint* e) { return text::FoldCase(e->name) == wanted; });
  if (found.empty()) {
    found = Where(endpoints, [&](const Endpoint* e) {
      return Holds(text::FoldCase(e->id), wanted) || Holds(text::FoldCase(e->name), wanted);
    });
  }
  return found;
}

Failure Inactive(const Endpoint& endpoint) {
  const auto [state, remedy] =
      endpoint.state == EndpointState::kDisabled    ? std::pair("disabled", "Enable it in the system's sound settings")
      : endpoint.state == EndpointState::kUnplugged ? std::pair("unplugged", "Plug it in")
                                                    : std::pair("not present", "Connect its device");
  return {ExitCode::kNoEndpoint, fmt::format("The endpoint '{}' is {}.", endpoint.name, state),
          fmt::format("{}, or choose another: {}", remedy, kListAdvice)};
}

Failure Ambiguous(const std::string& name, Flow flow, const Matches& matches) {
  std::vector<Candidate> candidates;
  for (const Endpoint* match : matches) candidates.push_back({match->name, match->id});
  return {ExitCode::kNoEndpoint, fmt::format("'{}' can mean any of {} {} endpoints:", name, matches.size(), Word(flow)),
          "Name one of them by its id.", std::move(candidates)};
}

Matches NamedEndpoints(const Matches& all, const Matches& sameFlow, Flow flow, const std::string& name) {
  if (name.empty()) {
    throw Failure(ExitCode::kBadInput, fmt::format("The name of the {} endpoint is empty.", Word(flow)), kListAdvice);
  }
  Matches matches = BestMatches(sameFlow, name);
  if (!matches.empty()) return matches;
  const Matches others = BestMatches(all, name);
  if (others.empty()) {
    throw Failure(ExitCode::kNoEndpoint, fmt::format("No endpoint is called '{}'.", name), kListAdvice);
  }
  throw Failure(ExitCode::kNoEndpoint,
                fmt::format("'{}' is no {} endpoint: '{}' is a {} endpoint.", name, Word(flow), others.front()->name,
                            Word(others.front()->flow)),
                kListAdvice);
}

Matches DefaultEndpoint(const Matches& sameFlow, Flow flow) {
  Matches matches = Where(sameFlow, [](const Endpoint* e) { return IsDefaultFor(*e, "console"); });
  if (!matches.empty()) return matches;
  throw Failure(ExitCode::kNoEndpoint, fmt::format("This system has no default {} endpoint.", Word(flow)),
                fmt::format("Name the endpoint: {}", kListAdvice));
}

// The module looks an id up its own way, and would silently test another endpoint than the one that was chosen.
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
  Matches all;
  for (const Endpoint& endpoint : endpoints) all.push_back(&endpoint);
  const Matches sameFlow = Where(all, [&](const Endpoint* e) { return e->flow == flow; });
  const Matches matches =
      name.has_value() ? NamedEndpoints(all, sameFlow, flow, *name) : DefaultEndpoint(sameFlow, flow);
  const Matches active = Where(matches, IsActive);
  if (active.size() > 1) throw Ambiguous(*name, flow, active);
  if (active.empty() && matches.size() > 1) throw Ambiguous(*name, flow, matches);
  if (active.empty()) throw Inactive(*matches.front());
  RequireReachable(endpoints, *active.front());
  return *active.front();
}

const Endpoint* ReachedEndpoint(const std::vector<Endpoint>& endpoints, Flow flow, const std::string& wanted) {
  const std::string lowered = text::LowerAscii(wanted);
  const auto reached = std::find_if(endpoints.begin(), endpoints.end(), [&](const Endpoint& endpoint) {
    return endpoint.flow == flow && IsActive(&endpoint) && Holds(lowered, text::LowerAscii(endpoint.id));
  });
  return reached != endpoints.end() ? &*reached : nullptr;
}

}  // namespace host
