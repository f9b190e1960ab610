#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/base/answer.h"
#include "host/call/guarded_call.h"
#include "host/commands/commands.h"
#include "host/contract/contract.h"
#include "host/endpoints/platform.h"
#include "host/report/json_output.h"

namespace host {

// The platform for a command; what a person must know about the choice goes to standard error at once.
PlatformChoice ChosenPlatform(const Options& options);

// The members of the JSON result on it.
JsonMembers PlatformMembers(const PlatformChoice& platform);

// The file of the module, as UTF-8.
std::string ModuleFile(const Options& options);

// A call of the module for a test, and what the host has learned.
struct TestCall {
  GuardedCall guarded;
  std::optional<Outcome> outcome;     // nothing when there is no reply that tells one
  std::optional<Failure> failure;     // there when there is no outcome
  std::vector<std::string> logLines;  // with --verbose
};

// What the progress on the terminal shows: a label, and which part of the whole, from 0.0 to 1.0, the call is.
struct ProgressSpan {
  std::string label;
  double start = 0.0, end = 1.0;
};

// Calls the module, with the progress on the terminal unless --quiet. Throws Failure when the module wasn't called.
TestCall CallModule(const CallRequest& request, const Options& options, const Interruption& interruption,
                    const ProgressSpan& span);

// Ends an answer to a call whose outcome amounts to `exitCode`: the exit code, the failure, and the state of the
// endpoints' settings, which matters more than most outcomes.
void Conclude(Answer& answer, const TestCall& call, ExitCode exitCode);

// The members of the JSON result that every test has.
JsonMembers CallMembers(const TestCall& call, const Options& options);
JsonMembers ReplyMembers(const TestCall& call);
JsonMembers OutcomeMembers(Test test, const Outcome& outcome);

// For a person, behind everything else; empty without --verbose.
std::string LogText(const TestCall& call, const Options& options);

Failure UnreadableReply();

}  // namespace host
