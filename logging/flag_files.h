#pragma once

#include <cstdint>

namespace logging {

// The level that the flag files in the log directory ask for: that of the most talkative one present, "debug3.flg" to
// "critical.flg", or kNormal when there is none. Only their presence counts. Every call asks the file system anew, so a
// file put in place or taken away works from the next message on, in a running process too.
//
// Costs one probe for each flag file up to the first found, eleven at most, and no allocation after the first call.
// Raises what Exists raises.
std::int32_t FlaggedLevel();

}  // namespace logging
