#include <time.h>

#include "logging/local_time.h"

namespace logging {

std::string LocalTimeText(std::time_t time) {
  char text[26];  // the least that _ctime64_s takes: 24 characters, line end, NUL
  const __time64_t seconds = time;
  if (_ctime64_s(text, sizeof text, &seconds) != 0) return {};
  return {text, 24};
}

}  // namespace logging
