#pragma once

#include <string>

#include "host/report/run_record.h"

// What a command found out on `platform`, as the text of the JSON object `result` (docs/rmthost-json.md).
namespace host {

// A run on chosen endpoints; with `plotData` what a drawing is made from is in it too.
std::string RunJson(const std::string& platform, const RunRecord& run, bool plotData);

// A run of a contract given.
std::string ContractRunJson(const std::string& platform, const RunRecord& run);

// One of a series of runs on chosen endpoints: without the platform and the reply, but with the failure.
std::string RunOfSeriesJson(const RunRecord& run);

}  // namespace host
