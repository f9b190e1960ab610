#pragma once

#include <string>

#include "host/commands/module_run.h"

namespace host {

// Whether a run listens to its capture endpoint beside the module.
enum class Listen { kNo, kYes };

// Chooses the endpoints that the options name, runs the test once, and judges it. Throws Failure when the module wasn't
// called.
RunRecord RunOnEndpoints(const Options& options, const std::string& platform, Listen listen,
                         const Interruption& interruption, const Progress::Span& span);

}  // namespace host
