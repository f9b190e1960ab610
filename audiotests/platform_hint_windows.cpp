#include "audiotests/platform_hint.h"

namespace ZQ_RMT_TESTS_AUDIO {

// The audio platform is the system's own.
void LogMissingPlatform(std::int32_t, logging::Logger&) {}

}  // namespace ZQ_RMT_TESTS_AUDIO
