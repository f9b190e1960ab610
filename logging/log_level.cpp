#include "logging/log_level.h"

namespace logging {
namespace {

struct Level {
  const char* name;
  std::int32_t codePrefix;
};

constexpr Level kLevels[] = {
    {"debug3", 500000000},        // kDebug3
    {"debug2", 500000000},        // kDebug2
    {"debug1", 500000000},        // kDebug1
    {"test3", 0},                 // kTest3
    {"test2", 0},                 // kTest2
    {"test1", 300000000},         // kTest1
    {"normal", 200000000},        // kNormal
    {"notification", 400000000},  // kNotification
    {"warning", 700000000},       // kWarning
    {"error", 800000000},         // kError
    {"critical", 900000000},      // kCritical
    {"console", 100000000},       // kConsole
};

}  // namespace

const char* LevelName(std::int32_t level) {
  return kLevels[level < kDebug3 || level > kConsole ? kNormal : level].name;
}

std::int32_t CodePrefix(LogLevel level) {
  return kLevels[level].codePrefix;
}

}  // namespace logging
