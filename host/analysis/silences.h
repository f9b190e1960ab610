#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "host/analysis/baseband.h"

namespace host {

// The stretches of values, as the first one and the one after the last, in which a sound of the tone's narrow band falls
// silent and goes on in the same phase within 25 ms. The tone's own zeros turn its phase around, and nothing that changes
// as slowly as it does, steady or not, touches zero and returns. `least` is the power that must be heard on both sides.
std::vector<std::pair<std::size_t, std::size_t>> FindSilences(const Baseband& baseband, std::size_t first,
                                                              std::size_t last, double least);

}  // namespace host
