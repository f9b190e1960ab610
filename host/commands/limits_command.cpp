#include "host/base/json.h"
#include "host/commands/commands.h"
#include "host/contract/contract_file.h"

namespace host {
namespace {

constexpr std::size_t kMostMiB = 1;
constexpr const char* kAdvice = "Give a file of limits, as 'rmthost limits' prints them, or - for standard input.";

}  // namespace

Limits LimitsGiven(const Options& options) {
  Limits limits;
  if (options.limitsFile.has_value())
    ReadLimits(ReadTextFile(*options.limitsFile, "limits file", kMostMiB, kAdvice), *options.limitsFile, limits);
  if (options.limits.minPeak.has_value()) limits.minPeak = options.limits.minPeak;
  if (options.limits.maxPeak.has_value()) limits.maxPeak = options.limits.maxPeak;
  if (limits.minPeak.value_or(0.0) <= limits.maxPeak.value_or(1.0)) return limits;
  throw Failure(ExitCode::kBadInput, "No peak can pass: --min-peak is above --max-peak.", "Give a lower --min-peak.");
}

CommandResult ShowLimits(const Options& options) {
  const Json limits = LimitsInForce(LimitsGiven(options), true);
  CommandResult result;
  result.text = limits.dump(2) + "\n";
  result.json = TextOf({{"limits", limits}});
  return result;
}

}  // namespace host
