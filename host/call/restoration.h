#pragma once

#include <rapidjson/document.h>

#include <string>
#include <vector>

#include "host/endpoints/endpoints.h"

namespace host {

// What became of the settings, after a test, of one endpoint that it may have changed.
struct EndpointRestoration {
  std::string id, name;
  std::string before;                // how it was before the test, as "levels 0.25 0.75, muted"
  std::vector<std::string> putBack;  // "mute", "levels": what wasn't as before, and is so again
  std::vector<std::string> unknown;  // "mute", "levels": what couldn't be read before the test
  std::string error;                 // why it isn't as before; empty when it is, as far as it is known
};

// The same of all endpoints of a test.
struct Restoration {
  enum class State { kYes, kNo, kUnknown, kNotNeeded };

  std::vector<EndpointRestoration> endpoints;
  std::string notNeeded;  // why there was nothing to restore; empty when there was

  State Summary() const;
  // Whether nothing had to be put back, and nothing is unknown.
  bool FoundAllAsBefore() const;
};

// Puts the mute state and the levels of endpoints back to what they are in `saved`, where they differ, and reads them
// back. The thread must be on the platform.
Restoration PutBack(const std::vector<Endpoint>& saved);

// The same when nothing could be done, for the reason `error`.
Restoration FailedRestoration(const std::vector<Endpoint>& saved, const std::string& error);

// A line for a person, without its end, as "restored: yes".
std::string RestorationText(const Restoration& restoration);

// A JSON object (json_output.h), and what it says.
std::string RestorationJson(const Restoration& restoration);
Restoration ReadRestoration(const rapidjson::Value& object);

}  // namespace host
