#include "logging/log_record.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace logging {
namespace {

// A percent may be larger than any integer type holds, so it isn't cast to one.
std::string WholePart(double value) {
  char digits[std::numeric_limits<double>::max_exponent10 + 1];
  const auto end = std::to_chars(std::begin(digits), std::end(digits), std::trunc(value), std::chars_format::fixed, 0);
  return {digits, end.ptr};
}

}  // namespace

std::string LogLine(const LogRecord& record) {
  std::string line = record.timeStamp + ", " + record.code + ", " + LevelName(record.level) + ": ";
  if (record.percent > 0) line += WholePart(record.percent) + "% ";
  line += record.text;
  line += ", ";
  if (!record.dataType.empty()) line += "DataType included: " + record.dataType + ", ";
  return line + "[" + record.source + "]\n";
}

}  // namespace logging
