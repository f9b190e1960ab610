#pragma once

#include <cstdint>

#include "logging/logger.h"

namespace ZQ_RMT_TESTS_AUDIO {

// Says in the log what the host has missed when a test ended with `outcome` because the calling thread is on no audio platform.
// Called ahead of ReportOutcome and at the level of such an outcome, so that the outcome's own line stays the last. Each system
// has a source file of its own; CMake picks it.
void LogMissingPlatform(std::int32_t outcome, logging::Logger& logger);

}  // namespace ZQ_RMT_TESTS_AUDIO
