#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <vector>

#include "host/commands/commands.h"
#include "host/commands/test_run.h"
#include "text/utf.h"

namespace host {
namespace {

// Of the runs so far.
struct Summary {
  std::size_t passes = 0;
  std::map<std::string, std::size_t> failures;  // by what they came to
  std::vector<double> peaks, seconds;
};

bool WasInterrupted(const TestRun& run) {
  return run.call.failure.has_value() && run.call.failure->exitCode == ExitCode::kInterrupted;
}

std::string FailureWord(const TestRun& run) {
  if (run.call.failure.has_value()) return run.call.failure->exitCode == ExitCode::kTimedOut ? "timed out" : "broken";
  if (run.judgement != Judgement::kFailed) return JudgementWord(run.judgement);
  return std::to_string(run.call.outcome->returnCode);
}

Summary SumUp(const std::vector<TestRun>& runs) {
  Summary summary;
  for (const TestRun& run : runs) {
    if (WasInterrupted(run)) continue;
    run.Passed() ? ++summary.passes : ++summary.failures[FailureWord(run)];
    if (const std::optional<double> peak = run.Peak()) summary.peaks.push_back(*peak);
    if (const std::optional<double> seconds = run.call.guarded.report.seconds) summary.seconds.push_back(*seconds);
  }
  std::sort(summary.peaks.begin(), summary.peaks.end());
  std::sort(summary.seconds.begin(), summary.seconds.end());
  return summary;
}

// `sorted` must not be empty.
double Median(const std::vector<double>& sorted) {
  const std::size_t middle = sorted.size() / 2;
  return sorted.size() % 2 != 0 ? sorted[middle] : (sorted[middle - 1] + sorted[middle]) / 2;
}

std::string SpreadText(const char* label, const std::vector<double>& sorted, int decimals, const char* unit) {
  if (sorted.empty()) return "";
  return fmt::format("  {0:<10} {1:<9.{4}f} {2:<9.{4}f} {3:.{4}f}{5}\n", label, sorted.front(), Median(sorted),
                     sorted.back(), decimals, unit);
}

std::string SpreadJson(const std::vector<double>& sorted) {
  if (sorted.empty()) return "null";
  return JsonObject({{"minimum", JsonNumber(sorted.front())},
                     {"median", JsonNumber(Median(sorted))},
                     {"maximum", JsonNumber(sorted.back())}});
}

std::string Text(const Summary& summary, const std::vector<TestRun>& runs, const Options& options, const Style& style) {
  const bool passed = summary.passes == static_cast<std::size_t>(options.runs);
  std::string text = fmt::format("{}  {} of {} passed\n", Verdict(passed, style), summary.passes, options.runs);
  for (const auto& [word, count] : summary.failures) text += fmt::format("  {:<10} {}\n", word, count);
  if (!summary.seconds.empty()) text += "\n             minimum   median    maximum\n";
  text += SpreadText("peak", summary.peaks, 6, "") + SpreadText("time", summary.seconds, 3, " s");
  for (std::size_t i = 0; i < runs.size(); ++i) {
    const Restoration& restoration = runs[i].call.guarded.restoration;
    const std::string logLines = LogText(runs[i].call, options);
    if (!runs[i].Passed() || !restoration.FoundAllAsBefore() || !logLines.empty()) {
      text += fmt::format("\nrun {}: {}, {}\n", i + 1, runs[i].Passed() ? "pass" : FailureWord(runs[i]),
                          RestorationText(restoration));
    }
    text += logLines;
  }
  const bool allAsBefore = std::all_of(runs.begin(), runs.end(), [](const TestRun& run) {
    return run.call.guarded.restoration.Summary() == Restoration::State::kYes;
  });
  return text + (allAsBefore ? "\nrestored: yes, after every run\n" : "");
}

std::string RunJson(const TestRun& run, const Options& options) {
  JsonMembers members = RunMembers(run, options);
  if (run.call.failure.has_value()) members.emplace_back("error", FailureJson(*run.call.failure));
  return JsonObject(members);
}

std::string Result(const Summary& summary, const std::vector<TestRun>& runs, const PlatformChoice& platform,
                   const Options& options) {
  std::vector<std::string> failures, shown;
  for (const auto& [word, count] : summary.failures) failures.push_back(fmt::format("{}:{}", JsonString(word), count));
  for (const TestRun& run : runs) shown.push_back(RunJson(run, options));
  JsonMembers members = PlatformMembers(platform);
  Append(members, {{"test", JsonString(TestWord(options.test))},
                   {"asked", fmt::to_string(options.runs)},
                   {"passes", fmt::to_string(summary.passes)},
                   {"failures", fmt::format("{{{}}}", fmt::join(failures, ","))},
                   {"peak", SpreadJson(summary.peaks)},
                   {"seconds", SpreadJson(summary.seconds)},
                   {"runs", JsonArray(shown)}});
  return JsonObject(members);
}

// Whether there can be another run after this one.
bool CanGoOn(const TestRun& run, const Options& options) {
  // Another run would take what this one has left for how it was before.
  if (run.call.guarded.restoration.Summary() == Restoration::State::kNo) return false;
  return run.Passed() || !options.failFast;
}

}  // namespace

Answer RepeatTest(const Options& options, const Style& style) {
  const PlatformChoice platform = ChosenPlatform(options);
  const Interruption interruption;
  std::vector<TestRun> runs;
  Answer answer;
  while (runs.size() < static_cast<std::size_t>(options.runs)) {
    const double done = static_cast<double>(runs.size()), whole = options.runs;
    const ProgressSpan span{
        .label = fmt::format("run {} of {}", done + 1, options.runs), .start = done / whole, .end = (done + 1) / whole};
    try {
      runs.push_back(RunTest(options, platform.used, /*listen=*/false, interruption, span));
    } catch (const Failure& failure) {
      // What was there for the first run may not be there for a later one, and then the runs so far still count.
      if (runs.empty()) throw;
      answer.failure = failure;
      answer.exitCode = failure.exitCode;
      break;
    }
    if (interruption.Requested() || !CanGoOn(runs.back(), options)) break;
  }

  const Summary summary = SumUp(runs);
  answer.text = Text(summary, runs, options, style);
  answer.result = Result(summary, runs, platform, options);
  if (answer.failure.has_value()) return answer;
  const bool passed = summary.passes == static_cast<std::size_t>(options.runs);
  answer.exitCode = passed ? ExitCode::kPass : ExitCode::kFail;
  const Restoration& last = runs.back().call.guarded.restoration;
  if (interruption.Requested() && !passed) {
    answer.failure = Failure(ExitCode::kInterrupted, "Interrupted.", "The runs before are summed up.");
  } else if (last.Summary() == Restoration::State::kNo) {
    answer.failure = NotRestored(last);
  }
  if (answer.failure.has_value()) answer.exitCode = answer.failure->exitCode;
  return answer;
}

}  // namespace host
