#pragma once

#include <string>

#include "host/base/text_output.h"
#include "host/report/run_record.h"

namespace host {

// For a person: the verdict, the endpoints, the figures; without what became of the endpoints. The run must have
// endpoints and an outcome.
std::string RunText(const RunRecord& run, const Style& style);

// The lines that came to the log, to stand behind everything else; empty without --verbose.
std::string LogText(const RunRecord& run);

}  // namespace host
