#pragma once

#include <chrono>
#include <functional>
#include <string>

#include "host/base/interruption.h"
#include "host/call/module_messages.h"

namespace host {

// The least and the most of --timeout, and what it is when it isn't given.
inline constexpr double kShortestTimeout = 0.01, kDefaultTimeout = 30, kLongestTimeout = 86400;
// The same of --wait, whose least is 0.
inline constexpr double kDefaultWait = 30;

// How a call is guarded.
struct Guarding {
  std::chrono::duration<double> timeout;               // for the module
  std::chrono::duration<double> wait{kDefaultWait};    // for another test of the same endpoints
  std::function<void(const std::string&)> tellOfWait;  // gets a sentence when waiting begins
};

// Calls the module in a child process, and afterwards, whatever happened, puts the settings of the endpoints that the
// contract names back; should this process not live to do it, a guardian does. Holds these endpoints meanwhile. The report
// has a failure too when the module gave no reply, crashed, took too long or was interrupted. Throws Failure when the
// module wasn't called.
CallReport CallGuarded(const CallRequest& request, const Guarding& guarding, const Interruption& interruption);

// The same for a check, which touches no endpoint. Throws Failure whenever the module's process gives no result.
CommandResult CheckGuarded(const CheckRequest& request, std::chrono::duration<double> timeout);

}  // namespace host
