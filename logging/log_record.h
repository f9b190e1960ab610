#pragma once

#include <cstdint>
#include <string>

#include "logging/log_level.h"

namespace logging {

// A message as a logger accepted it.
struct LogRecord {
  std::string timeStamp;  // local time in the form of ctime, 24 characters
  std::string code;       // in decimal (MessageCode)
  std::int32_t level = kNormal;
  std::string text;
  std::string source;    // the logger's name
  std::string dataType;  // the type of a block of data that came with the message; empty for none
  double percent = 0;    // the share done; 0 or below when there is none to show
};

// The record as a line of the log, with its line feed:
//
//   time, code, level: [N% ]text, [DataType included: T, ][source]
//
// N is the percent without its fraction. The text isn't escaped: its commas and line ends stand in the line.
std::string LogLine(const LogRecord& record);

}  // namespace logging
