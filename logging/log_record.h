#pragma once

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

#include "logging/log_level.h"

namespace logging {

struct FreeDeleter {
  void operator()(void* block) const { std::free(block); }
};

// The last message that a logger accepted.
struct LogRecord {
  std::string timeStamp;  // local time in the form of ctime, 24 characters
  std::string code;       // in decimal
  std::int32_t level = kNormal;
  std::string text;
  std::string source;                       // the logger's name
  std::unique_ptr<void, FreeDeleter> data;  // an attached block; it stays out of the file
  std::string dataType;                     // the type of `data`; empty: none is named in the line
  double percent = 0;                       // the share done; 0 or below: none is shown
};

// The record as a line of the log, its line feed included:
//
//   time, code, level: [N% ]text, [DataType included: T, ][source]
//
// The text stands as it is, commas and line ends too.
std::string LogLine(const LogRecord& record);

}  // namespace logging
