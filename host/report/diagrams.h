#pragma once

#include <optional>
#include <string>

#include "host/report/run_record.h"

namespace host {

// The width of all diagrams, and their height when what is drawn begins at the top; in the units of the picture.
inline constexpr double kDiagramsWidth = 820.0, kDiagramsHeight = 440.0;

// What a run heard as SVG elements (W3C, "Scalable Vector Graphics 1.1"), `top` below the picture's upper edge: the
// waveform with its interruptions and clipped stretches, below it the spectrum, and beside that, when a tone was
// played, how strong each partial of the tone was against what it should be. They are styled by kDrawingStyle. The run
// must have heard something.
std::string Diagrams(const RunRecord& run, double top);

}  // namespace host
