#pragma once

#include "host/analysis/findings.h"
#include "host/analysis/spectrum_of_stretch.h"

namespace host {

// What a spectrum consists of. With a `toneSpeed` above 0 it is that of what is left beside the tone, and lines where
// the tone and its harmonics stand are no other tone.
RemainderFindings DescribeRemainder(const StretchSpectrum& spectrum, double toneSpeed);

}  // namespace host
