#pragma once

#include <vector>

#include "host/call/module_messages.h"
#include "host/endpoints/endpoints.h"

namespace host {

// Calls the module in this process, listening meanwhile when the request asks for it. On a platform whose endpoints end
// with the process, puts their settings back too. All failures are in the report.
CallReport CallHere(const CallRequest& request);

// The endpoints whose settings the module changes for the length of the test that is asked for.
std::vector<Endpoint> ReachedEndpoints(const std::vector<Endpoint>& endpoints, const CallRequest& request);

}  // namespace host
