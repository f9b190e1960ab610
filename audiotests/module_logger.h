#pragma once

#include "logging/logger.h"

namespace ZQ_RMT_TESTS_AUDIO {

// A new logger for a test, which writes to the framework's log and has logged the module's version there. It belongs
// to nobody and is never destroyed, because messages can come until the process ends. Raises nothing, in whatever
// state the log directory is: a host must be able to load the module.
logging::Logger* CreateTestLogger();

}  // namespace ZQ_RMT_TESTS_AUDIO
