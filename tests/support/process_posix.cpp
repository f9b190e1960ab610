#include <malloc.h>
#include <time.h>

#include <cstdlib>

#include "tests/support/process.h"

void SetEnvironment(const char* name, const std::string& value) { setenv(name, value.c_str(), 1); }

void SetTimeZone(const std::string& zone) {
  SetEnvironment("TZ", zone);
  tzset();
}

std::size_t BytesInUse() {
  const auto heap = mallinfo2();
  return heap.uordblks + heap.hblkhd;
}
