#pragma once

#include "logging/logger.h"

namespace logging {

// The logger that all record classes share, with the source name "ZQ_RMT_MODELS". The first call creates it, and the
// log directory too unless it is there. If the directory can't be created, raises the filesystem_error
// "create_directory", and the next call tries again. The logger lives to the end of the process. Not guarded: called
// on one thread.
Logger& GetModelLogger();

}  // namespace logging
