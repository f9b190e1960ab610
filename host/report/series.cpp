#include "host/report/series.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "host/base/json.h"
#include "host/report/run_json.h"
#include "host/report/run_text.h"
#include "host/report/run_words.h"
#include "text/utf.h"

namespace host {
namespace {

std::string FailureWord(const RunRecord& run) {
  if (run.failure.has_value()) return run.failure->exitCode == ExitCode::kTimedOut ? "timed out" : "broken";
  // A module's failure by its code, and the host's by its word.
  return run.verdict.word == "failed" ? std::to_string(run.outcome->returnCode) : run.verdict.word;
}

// A module's failure with its code.
std::string FailureSentence(const RunRecord& run) {
  const bool isModules = !run.failure.has_value() && run.verdict.word == "failed";
  return isModules ? fmt::format("{} ({})", ReasonOf(run), run.outcome->returnCode) : ReasonOf(run);
}

// Nothing when there are no values.
std::optional<Spread> SpreadOf(std::vector<double> values) {
  if (values.empty()) return std::nullopt;
  std::sort(values.begin(), values.end());
  const std::size_t middle = values.size() / 2;
  const double median = values.size() % 2 != 0 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
  return Spread{.minimum = values.front(), .median = median, .maximum = values.back()};
}

std::string SpreadText(const char* label, const std::optional<Spread>& spread, int decimals, const char* unit) {
  if (!spread.has_value()) return "";
  return fmt::format("  {0:<10} {1:<9.{4}f} {2:<9.{4}f} {3:.{4}f}{5}\n", label, spread->minimum, spread->median,
                     spread->maximum, decimals, unit);
}

}  // namespace

Series SumUp(const std::vector<RunRecord>& runs, Test test, int asked) {
  Series series{.test = test, .asked = asked, .failures = {}, .peak = {}, .seconds = {}, .junit = {}};
  std::vector<double> peaks, seconds;
  for (const RunRecord& run : runs) {
    if (run.WasInterrupted()) continue;
    if (run.Passed()) {
      ++series.passes;
    } else {
      ++series.failures[FailureWord(run)];
    }
    if (run.Peak().has_value()) peaks.push_back(*run.Peak());
    if (run.call.seconds.has_value()) seconds.push_back(*run.call.seconds);
  }
  series.peak = SpreadOf(std::move(peaks));
  series.seconds = SpreadOf(std::move(seconds));
  return series;
}

std::string SeriesText(const Series& series, const std::vector<RunRecord>& runs, const Style& style) {
  std::string text =
      fmt::format("{}  {} of {} passed\n", PassOrFail(series.Passed(), style), series.passes, series.asked);
  for (const auto& [word, count] : series.failures) text += fmt::format("  {:<10} {}\n", word, count);
  if (series.seconds.has_value()) text += "\n             minimum   median    maximum\n";
  text += SpreadText("peak", series.peak, 6, "") + SpreadText("time", series.seconds, 3, " s");
  for (std::size_t i = 0; i < runs.size(); ++i) {
    const RunRecord& run = runs[i];
    const std::string logLines = LogText(run);
    if (!run.Passed() || !run.call.restored.FoundAllAsBefore() || !logLines.empty()) {
      const std::string sentence = run.Passed() ? "pass." : text::Printable(FailureSentence(run));
      const std::string line = fmt::format("run {}: {} {}", i + 1, sentence, RestorationText(run.call.restored));
      text += "\n" + Wrapped(line, style) + "\n";
    }
    // The same advice is given once, behind the last run that it is for.
    const std::string own = AdviceOf(run);
    const bool isLast = i + 1 == runs.size() || runs[i + 1].Passed() || FailureWord(runs[i + 1]) != FailureWord(run);
    if (!own.empty() && isLast) text += Wrapped(text::Printable(own), style) + "\n";
    text += logLines;
  }
  const bool allAsBefore = std::all_of(runs.begin(), runs.end(), [](const RunRecord& run) {
    return run.call.restored.Summary() == Restoration::State::kYes;
  });
  if (allAsBefore) text += "\nrestored: yes, after every run\n";
  if (series.junit.has_value()) text += fmt::format("\njunit: {}\n", text::Printable(*series.junit));
  return text;
}

std::string SeriesJson(const std::string& platform, const Series& series, const std::vector<RunRecord>& runs) {
  Json json = {{"platform", platform}};
  json.update(Json(series));
  std::vector<std::string> texts;
  for (const RunRecord& run : runs) texts.push_back(RunOfSeriesJson(run));
  std::string text = TextOf(json);
  AppendMember(text, "runs", fmt::format("[{}]", fmt::join(texts, ",")));
  return text;
}

}  // namespace host
