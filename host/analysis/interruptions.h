#pragma once

#include <span>
#include <vector>

#include "host/analysis/findings.h"
#include "host/analysis/tone_search.h"

namespace host {

// What interrupts the tone between its begin and its end. Only where the tone is loud can anything be told: where its
// envelope is above a quarter of its peak. `hostLosses` are the times, in seconds, at which the host lost sound.
std::vector<ToneInterruption> FindInterruptions(const ToneSearch& search, std::span<const double> hostLosses);

}  // namespace host
