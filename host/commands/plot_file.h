#pragma once

#include <string>

namespace host {

// Writes a drawing: the file is there as a whole, or as it was before. Throws Failure.
void WritePlot(const std::string& file, const std::string& drawing);

}  // namespace host
