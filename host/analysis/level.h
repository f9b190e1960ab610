#pragma once

#include <algorithm>
#include <cmath>

#include "host/analysis/findings.h"

namespace host {

// A ratio of powers in dB, never below kSilenceDb.
inline double PowerDb(double ratio) { return ratio > 1e-20 ? 10.0 * std::log10(ratio) : kSilenceDb; }

// A mean square in dBFS as AES17 has it, a sine of full scale being 0.
inline double FullScaleDb(double meanSquare) { return PowerDb(2.0 * meanSquare); }

}  // namespace host
