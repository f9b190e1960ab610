#include <fmt/core.h>

#include "host/commands/commands.h"
#include "host/endpoints/platform.h"
#include "host/restoring/restoration_json.h"
#include "text/utf.h"

namespace host {
namespace {

std::string EndpointLines(const Restoration& restored) {
  std::string text;
  for (const EndpointRestoration& endpoint : restored.endpoints) {
    text += fmt::format("  {}\n    {}  ->  {}\n", text::Printable(endpoint.name), endpoint.found.value_or("unknown"),
                        endpoint.after.value_or("unknown"));
  }
  return text;
}

}  // namespace

CommandResult RestoreSettings(const Options& options) {
  const std::vector<LeftRun> runs = LookAtLeftRuns(options.onlyList ? LeftRuns::kShow : LeftRuns::kPutBack);
  CommandResult result;
  if (runs.empty()) result.text = "Nothing is left to put back.\n";
  std::size_t undone = 0;
  for (const LeftRun& run : runs) {
    result.text += LeftRunText(run) + "\n";
    if (run.restored.has_value()) result.text += EndpointLines(*run.restored);
    if (!options.onlyList && !run.isRunning && !run.IsDone()) ++undone;
  }
  result.json = TextOf({{"runs", ResultJson(runs)}});
  if (undone == 0) return result;
  result.failure = Failure(ExitCode::kNotRestored, fmt::format("{} of {} could not be put back.", undone, runs.size()),
                           "Set them by hand in the system's sound settings, and take the named files away.");
  result.exitCode = result.failure->exitCode;
  return result;
}

CommandResult PutBackLeftSettings(const Options& options) noexcept {
  CommandResult result;
  try {
    const std::string platform = ChoosePlatform(options.platform);
    if (EndsWithProcess(platform)) return result;
    std::vector<LeftRun> left;
    for (LeftRun& run : LookAtLeftRuns(LeftRuns::kPutBack, LastingPlatform(platform))) {
      if (run.isRunning) continue;
      result.notes += LeftRunText(run) + "\n";
      left.push_back(std::move(run));
    }
    if (!left.empty()) result.json = TextOf(ResultJson(left));
  } catch (const std::exception&) {
    // The command itself finds out what it needs, and says so.
    result.notes.clear();
  }
  return result;
}

}  // namespace host
