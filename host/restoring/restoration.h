#pragma once

#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "host/base/failure.h"
#include "host/base/member.h"
#include "host/endpoints/endpoints.h"

namespace host {

// What became of the settings, after a test, of one endpoint that it may have changed.
struct EndpointRestoration {
  std::string id, name;
  std::optional<std::string> before;  // how it was before the test, as "levels 25 % 75 %, muted"
  std::optional<std::string> after;   // how it is now, in the same words; nothing when it can't be read
  std::optional<std::string> found;   // how it was found after the test, before anything was put back
  std::vector<std::string> putBack;   // "mute", "levels": what wasn't as before, and is so again
  std::vector<std::string> kept;      // "mute", "levels": what somebody has changed meanwhile, and what was left so
  std::vector<std::string> unknown;   // "mute", "levels": what couldn't be read before the test
  std::optional<std::string> error;   // why it isn't as before; nothing when it is, as far as it is known

  static constexpr auto Members() {
    using E = EndpointRestoration;
    return std::tuple(Member("id", &E::id), Member("name", &E::name), Member("before", &E::before),
                      Member("found", &E::found), Member("after", &E::after), Member("putBack", &E::putBack),
                      Member("kept", &E::kept), Member("unknown", &E::unknown), Member("error", &E::error));
  }
};

// The same of all endpoints of a test.
struct Restoration {
  enum class State { kYes, kNo, kUnknown, kNotNeeded };

  std::optional<std::string> notNeeded;  // why there was nothing to restore; nothing when there was
  std::vector<EndpointRestoration> endpoints;

  State Summary() const;
  // Whether nothing had to be put back, and nothing is unknown.
  bool FoundAllAsBefore() const;

  static constexpr auto Members() {
    return std::tuple(Member("notNeeded", &Restoration::notNeeded), Member("endpoints", &Restoration::endpoints));
  }
};

// "yes", "no", "unknown" or "not needed".
const char* Word(Restoration::State state);

// Puts the mute state and the levels of endpoints back to what they are in `saved`, where they are as a test sets them, and
// reads them back. A test unmutes, and sets every channel to full level: what is neither so nor as it was, somebody has
// changed meanwhile, and it is left so. The thread must be on the platform.
Restoration PutBack(const std::vector<Endpoint>& saved);

// The same when nothing could be done, for the reason `error`.
Restoration FailedRestoration(const std::vector<Endpoint>& saved, const std::string& error);

// A line for a person, without its end, as "restored: yes".
std::string RestorationText(const Restoration& restoration);

// What to end with when the settings are not back, although the module told an outcome.
Failure NotRestored(const Restoration& restoration);

}  // namespace host
