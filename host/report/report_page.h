#pragma once

#include <string>

#include "host/report/run_record.h"

namespace host {

// A run on chosen endpoints as an HTML page for a customer's file: verdict, checks, diagrams, settings, log and reply.
// It stands by itself, has no script and fetches nothing. On paper it is one sheet of A4, without log and reply.
std::string ReportPage(const RunRecord& run);

}  // namespace host
