// Any text as a file of limits: it is read, or refused with a sentence and advice. What was read, written down and read
// again is the same.

#include <cstdint>
#include <cstdlib>
#include <string>

#include "host/base/failure.h"
#include "host/base/json.h"
#include "host/judging/limits.h"

namespace {

void Require(bool condition) {
  if (!condition) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  host::Limits limits;
  try {
    host::ReadLimits({reinterpret_cast<const char*>(data), size}, "limits.json", limits);
  } catch (const host::Failure& failure) {
    Require(!failure.message.empty() && !failure.advice.empty() && failure.exitCode == host::ExitCode::kBadInput);
    return 0;
  }
  host::Json written = limits;
  for (const char* peak : {"minPeak", "maxPeak"}) {
    if (written[peak].is_null()) written.erase(peak);
  }
  host::Limits again;
  host::ReadLimits(host::TextOf(written), "limits.json", again);
  Require(host::Json(again) == host::Json(limits));
  return 0;
}
