#pragma once

#include <optional>
#include <string>

#include "host/base/interruption.h"
#include "host/call/progress.h"
#include "host/commands/commands.h"
#include "host/report/run_record.h"

namespace host {

// The file of the module, as UTF-8.
std::string ModuleFile(const Options& options);

// Calls the module for the test and with the limits that `run` names, and fills in what came of it. Progress is shown on
// the terminal unless --quiet. Throws Failure when the module wasn't called.
void RunModule(const CallRequest& request, const Options& options, const Interruption& interruption,
               const Progress::Span& span, RunRecord& run);

// A run as the options ask for it, with the limits that LimitsGiven gave, before anything is done for it.
RunRecord NewRun(const Options& options, const Limits& limits);

// What is to be said about the log of a run: that it isn't where it is shared, or that nothing came to it. Empty when all is
// as usual.
std::string LogNotes(const RunRecord& run);

// Fills in the exit code, LogNotes and the failure that a run amounts to: that settings are not back matters more than most
// outcomes.
void Conclude(const RunRecord& run, CommandResult& result);

// Chooses the endpoints that the options name, runs the test once, listening to a capture endpoint beside the module, and
// judges it: fills in a new `run`, whose platform isn't "auto". What was heard goes into the file `saveTo`, which is there,
// if one is given. Throws Failure when the module wasn't called.
void RunOnEndpoints(const Options& options, const Interruption& interruption, const Progress::Span& span,
                    const std::optional<std::string>& saveTo, RunRecord& run);

}  // namespace host
