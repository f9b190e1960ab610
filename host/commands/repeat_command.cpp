#include <fmt/format.h>

#include <vector>

#include "host/commands/commands.h"
#include "host/commands/guarded_run.h"
#include "host/endpoints/platform.h"
#include "host/report/series.h"

namespace host {
namespace {

// Whether there can be another run after this one.
bool CanGoOn(const RunRecord& run, const Options& options) {
  // Another run would take what this one has left for how it was before.
  if (run.call.restored.Summary() == Restoration::State::kNo) return false;
  return run.Passed() || !options.failFast;
}

}  // namespace

CommandResult RepeatRuns(const Options& options, const Style& style) {
  const std::string platform = ChoosePlatform(options.platform);
  const Limits limits = LimitsGiven(options);
  const Interruption interruption;
  std::vector<RunRecord> runs;
  CommandResult result;
  while (runs.size() < static_cast<std::size_t>(options.runs)) {
    const double done = static_cast<double>(runs.size()), whole = options.runs;
    const Progress::Span span{
        .label = fmt::format("run {} of {}", done + 1, options.runs), .start = done / whole, .end = (done + 1) / whole};
    RunRecord run = NewRun(options, limits);
    run.platform = platform;
    try {
      RunOnEndpoints(options, interruption, span, std::nullopt, run);
    } catch (const Failure& failure) {
      // What was there for the first run may not be there for a later one, and then the runs so far still count.
      if (runs.empty()) throw;
      result.failure = failure;
      break;
    }
    runs.push_back(std::move(run));
    if (interruption.Requested() || !CanGoOn(runs.back(), options)) break;
  }

  const Series series = SumUp(runs, options.test, options.runs);
  result.text = SeriesText(series, runs, style);
  result.json = SeriesJson(platform, series, runs);
  result.exitCode = series.Passed() ? ExitCode::kPass : ExitCode::kFail;
  const Restoration& last = runs.back().call.restored;
  if (!result.failure.has_value() && interruption.Requested() && !series.Passed()) {
    result.failure = Failure(ExitCode::kInterrupted, "Interrupted.", "The runs before are summed up.");
  } else if (!result.failure.has_value() && last.Summary() == Restoration::State::kNo) {
    result.failure = NotRestored(last);
  }
  if (result.failure.has_value()) result.exitCode = result.failure->exitCode;
  return result;
}

}  // namespace host
