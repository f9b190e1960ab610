#pragma once

#include <string>

#include "host/report/run_record.h"

// What a picture and a page say of a run in the same words.
namespace host {

// "PASS", "FAIL: too quiet", or "NO RESULT" when the module told no outcome.
std::string VerdictTitle(const RunRecord& run);

// What was done with which endpoint, by their names.
std::string EndpointsTitle(const RunRecord& run);

// Why the run came to that, and what to do about it; the latter is empty for a pass.
std::string ReasonOf(const RunRecord& run);
std::string AdviceOf(const RunRecord& run);

// When it was tested, by which rmthost, on which platform.
std::string TestedText(const RunRecord& run);

// A warning when no real hardware took part; else empty.
std::string VirtualNote(const RunRecord& run);

// Of the tone that was played; 0 for none.
double ToneHz(const RunRecord& run);

// The class in the style sheets: "pass", "fail" or "faint".
const char* StyleOf(CheckResult result);

}  // namespace host
