#pragma once

#include <chrono>

#include "host/base/interruption.h"
#include "host/call/module_request.h"

namespace host {

// The least and the most of --timeout, and what it is when it isn't given.
inline constexpr double kShortestTimeout = 0.01, kDefaultTimeout = 30, kLongestTimeout = 86400;

// A call of the module that can't harm: what became of it, and of the endpoints' settings.
struct GuardedCall {
  CallReport report;  // its failure too, when the module gave no reply, crashed, took too long or was interrupted
  Restoration restoration;
};

// Calls the module in a child process that has `timeout`, and afterwards, whatever happened, puts the settings of the
// endpoints that the contract names back. Throws Failure when the module wasn't called.
GuardedCall CallGuarded(const CallRequest& request, std::chrono::duration<double> timeout,
                        const Interruption& interruption);

// The same for a check, which touches no endpoint. Throws Failure also for what befalls the module.
Answer CheckGuarded(const CheckRequest& request, std::chrono::duration<double> timeout);

// When a test passed or failed by the module's account, but the settings are not back: what to end with.
Failure NotRestored(const Restoration& restoration);

}  // namespace host
