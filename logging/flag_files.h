#pragma once

#include <cstdint>

namespace logging {

// The level that the flag files in the log directory ask for, "debug3.flg" to "critical.flg": that of the most
// talkative file that is there, or kNormal if none is. The contents don't count. Raises what Exists raises.
//
// Every call asks the file system anew, so that a file works from the next message on in a running process too. That
// costs a probe for each flag file up to the first found, eleven at most, and no allocation after the first call.
std::int32_t FlaggedLevel();

}  // namespace logging
