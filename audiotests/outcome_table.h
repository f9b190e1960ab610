#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "logging/logger.h"
#include "models/core/core_data.h"

namespace ZQ_RMT_TESTS_AUDIO {

// How an outcome is reported.
struct OutcomeEntry {
  std::int32_t severity;  // the framework's number for a level, which is the first digit of that level's codes
  std::u16string message;
};

// The outcomes that a host is told of, by id (ZQRMTOutcome). Built when the library is loaded and only read afterwards.
extern const std::map<std::int32_t, OutcomeEntry> OutcomeTable;

// Logs a text by the operation that a severity stands for. The framework gives numbers to eight of them; any other is
// logged at debug3. As those operations, returns the record that `logger` accepted last and raises a failing log
// probe's filesystem_error.
const logging::LogRecord* LogWithSeverity(logging::Logger& logger, std::int32_t severity, std::int32_t code,
                                          const std::string& text);

// Logs the outcome `code`, an id of the table, and copies the code and the text of the record that the logger returns
// to ReturnCode and ReturnMessage. An id that isn't in the table is logged as "Not handled". If the level in force
// rejects the line, the record is the last that `logger` accepted, and the host gets that one's code and text. Raises
// the filesystem_error of a failing log probe, with `coreData` unchanged.
void ReportOutcome(std::int32_t code, logging::Logger* logger, ZQ_RMT_MODELS::CoreData* coreData);

}  // namespace ZQ_RMT_TESTS_AUDIO
