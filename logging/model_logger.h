#pragma once

#include "logging/logger.h"

namespace logging {

// The one logger of the record classes, with the source name "ZQ_RMT_MODELS". The first call creates it, and the log
// directory if its parent is there; it lives to the end of the process. A directory that can't be created raises
// filesystem_error "create_directory", and the next call tries again. Not guarded: call it on one thread only.
Logger& GetModelLogger();

}  // namespace logging
