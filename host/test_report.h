#pragma once

#include <string>

#include "host/answer.h"
#include "host/contract.h"
#include "host/json_output.h"
#include "host/module.h"

namespace host {

// Calls the module, with the progress on the terminal unless `quiet`, and returns its reply. Throws Failure.
std::string CallModule(const Module& module, Test test, const std::string& contract, bool quiet);

ExitCode ExitCodeOf(Test test, const Outcome& outcome);

Failure UnreadableReply();

// The members of the JSON result that every test has: the outcome, the log and the reply.
JsonMembers OutcomeMembers(Test test, const Outcome& outcome, const std::string& reply);

}  // namespace host
