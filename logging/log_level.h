#pragma once

#include <cstdint>

namespace logging {

// How talkative a message is, the most talkative first. No operation of the logger writes at test3 and test2; as the
// level in force they work like any other. kConsole passes every filter.
enum LogLevel : std::int32_t {
  kDebug3,
  kDebug2,
  kDebug1,
  kTest3,
  kTest2,
  kTest1,
  kNormal,
  kNotification,
  kWarning,
  kError,
  kCritical,
  kConsole,
};

struct LevelTraits {
  const char* name;        // the word that stands in the log and in the names of flag files
  std::int32_t codeDigit;  // the first of the nine digits of a code
};

inline constexpr LevelTraits kLevels[] = {
    {"debug3", 5}, {"debug2", 5},       {"debug1", 5},  {"test3", 0}, {"test2", 0},    {"test1", 3},
    {"normal", 2}, {"notification", 4}, {"warning", 7}, {"error", 8}, {"critical", 9}, {"console", 1},
};

// The level's word; "normal" for a number that is no level.
constexpr const char* LevelName(std::int32_t level) {
  return kLevels[level < kDebug3 || level > kConsole ? kNormal : level].name;
}

// The code of a message with this id, from a component whose number is 0 or has eight digits with the last six 0. For
// an id of up to six digits the code has nine: one for the level, two for the component, six for the id. An id that is
// not below the component's number is taken to contain it already, and an id of nine digits to be a complete code.
constexpr std::int32_t MessageCode(LogLevel level, std::int32_t componentNumber, std::int32_t id) {
  constexpr std::int32_t kFirstCompleteCode = 100000000;
  if (id >= kFirstCompleteCode) return id;
  const bool lacksComponent = componentNumber >= 1 && id < componentNumber;
  return id + (lacksComponent ? componentNumber : 0) + kLevels[level].codeDigit * kFirstCompleteCode;
}

}  // namespace logging
