#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "logging/logger.h"
#include "models/core/core_data.h"

namespace ZQ_RMT_TESTS_AUDIO {

// How an outcome is told: at which level, and in which words.
struct OutcomeEntry {
  std::int32_t severity;
  std::u16string message;
};

// The outcomes that a host is told of, by outcome code. Made when the library is loaded, and only read from then on.
extern const std::map<std::int32_t, OutcomeEntry> OutcomeTable;

// Logs the outcome `code` and copies the code and text of the logger's record into ReturnCode and ReturnMessage. A code
// that isn't in the table is logged as "Not handled". Where the level in force rejects the line, the host therefore
// gets the line that this logger wrote last.
void ReportOutcome(std::int32_t code, logging::Logger* logger, ZQ_RMT_MODELS::CoreData* coreData);

}  // namespace ZQ_RMT_TESTS_AUDIO
