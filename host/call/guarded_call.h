#pragma once

#include <chrono>

#include "host/base/interruption.h"
#include "host/call/module_messages.h"

namespace host {

// The least and the most of --timeout, and what it is when it isn't given.
inline constexpr double kShortestTimeout = 0.01, kDefaultTimeout = 30, kLongestTimeout = 86400;

// Calls the module in a child process that has `timeout`, and afterwards, whatever happened, puts the settings of the
// endpoints that the contract names back. The report has a failure too when the module gave no reply, crashed, took too
// long or was interrupted. Throws Failure when the module wasn't called.
CallReport CallGuarded(const CallRequest& request, std::chrono::duration<double> timeout,
                       const Interruption& interruption);

// The same for a check, which touches no endpoint. Throws Failure whenever the module's process gives no result.
CommandResult CheckGuarded(const CheckRequest& request, std::chrono::duration<double> timeout);

}  // namespace host
