#pragma once

#include <cstdint>

namespace logging {

// How talkative a message is, the most talkative first.
enum LogLevel : std::int32_t {
  kDebug3,
  kDebug2,
  kDebug1,
  kTest3,  // no operation writes at test3 and test2; as the level in force they work like any other
  kTest2,
  kTest1,
  kNormal,
  kNotification,
  kWarning,
  kError,
  kCritical,
  kConsole,  // passes every filter
};

// The level's word as it stands in the log; "normal" for a number that is no level.
const char* LevelName(std::int32_t level);

// What a message of this level adds to its code: the first of the code's nine digits says the group of levels.
std::int32_t CodePrefix(LogLevel level);

}  // namespace logging
