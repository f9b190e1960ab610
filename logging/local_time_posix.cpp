#include <time.h>

#include "logging/local_time.h"

namespace logging {

std::string LocalTimeText(std::time_t time) {
  char text[26];  // the size that POSIX asks for: 24 characters, line end, NUL
  if (ctime_r(&time, text) == nullptr) return {};
  return {text, 24};
}

}  // namespace logging
