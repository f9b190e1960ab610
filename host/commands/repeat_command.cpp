#include <fmt/core.h>

#include <utility>
#include <vector>

#include "host/commands/commands.h"
#include "host/commands/guarded_run.h"
#include "host/commands/results_file.h"
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
  const Limits limits = LimitsGiven(options);
  const Interruption interruption;
  ResultsFile results(options);
  std::string platform;
  std::vector<RunRecord> runs;
  CommandResult result;
  while (runs.size() < static_cast<std::size_t>(options.runs)) {
    const double done = static_cast<double>(runs.size()), whole = options.runs;
    const Progress::Span span{
        .label = fmt::format("run {} of {}", done + 1, options.runs), .start = done / whole, .end = (done + 1) / whole};
    RunRecord run = NewRun(options, limits);
    run.asked += fmt::format(", run {}", runs.size() + 1);
    try {
      if (platform.empty()) platform = ChoosePlatform(options.platform);
      run.platform = platform;
      RunOnEndpoints(options, interruption, span, std::nullopt, run);
    } catch (const Failure& failure) {
      if (runs.empty()) {
        results.WriteUnbegun(std::move(run), failure);
        throw;
      }
      // What was there for the first run may not be there for a later one, and then the runs so far still count.
      result.failure = run.failure = failure;
      results.Add(run);
      break;
    }
    results.Add(run);
    // The results have the log always.
    if (!options.verbose) run.logLines.reset();
    runs.push_back(std::move(run));
    if (interruption.Requested() || !CanGoOn(runs.back(), options)) break;
  }

  Series series = SumUp(runs, options.test, options.runs);
  result.notes += LogNotes(runs.back());
  result.exitCode = series.Passed() ? ExitCode::kPass : ExitCode::kFail;
  const Restoration& last = runs.back().call.restored;
  if (!result.failure.has_value() && interruption.Requested() && !series.Passed()) {
    result.failure = Failure(ExitCode::kInterrupted, "Interrupted.", "The runs before are summed up.");
  } else if (!result.failure.has_value() && last.Summary() == Restoration::State::kNo) {
    result.failure = NotRestored(last);
  }
  try {
    const bool isInterrupted = result.failure.has_value() && result.failure->exitCode == ExitCode::kInterrupted;
    if (!isInterrupted) series.junit = results.Write();
  } catch (const Failure& notWritten) {
    if (!result.failure.has_value()) result.failure = notWritten;
  }
  if (result.failure.has_value()) result.exitCode = result.failure->exitCode;
  result.text = SeriesText(series, runs, style);
  result.json = SeriesJson(platform, series, runs);
  return result;
}

}  // namespace host
