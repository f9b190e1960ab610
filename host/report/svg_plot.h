#pragma once

#include <string>

#include "host/report/run_record.h"

namespace host {

// What a run heard as an SVG document that stands by itself: the verdict, the endpoints, when and by what it was
// tested, the checks, and below them the diagrams. The run must have heard something.
std::string SvgPlot(const RunRecord& run);

}  // namespace host
