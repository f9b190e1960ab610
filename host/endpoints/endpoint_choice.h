#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/endpoints/endpoints.h"

namespace host {

// The endpoint of `flow` that `name` means: its id, its name, or an unambiguous piece of either, whatever the case of its letters.
// A whole id beats a whole name, which beats a piece; among equals active endpoints beat inactive ones. Without a name
// the default of the console role. Throws Failure for none, several, or an inactive one.
const Endpoint& ChooseEndpoint(const std::vector<Endpoint>& endpoints, Flow flow,
                               const std::optional<std::string>& name);

// The endpoint that the module takes for the id `wanted`: the first active one of `flow` whose whole id occurs in it,
// in any case of A to Z. Null when there is none.
const Endpoint* ReachedEndpoint(const std::vector<Endpoint>& endpoints, Flow flow, const std::string& wanted);

}  // namespace host
