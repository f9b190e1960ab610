#include <rapidjson/document.h>

#include <fmt/format.h>

#include "host/base/system.h"
#include "host/commands/commands.h"
#include "host/commands/test_run.h"
#include "host/listening/heard.h"
#include "host/report/plot_file.h"
#include "host/report/svg_plot.h"
#include "host/report/terminal_plot.h"
#include "text/utf.h"

namespace host {
namespace {

constexpr double kToneHz = 1200.0;  // of the record test

// What was heard, and the ways to show it that were asked for.
class Plot {
 public:
  Plot(const TestRun& run, const Options& options, const Style& style)
      : run_(run), options_(options), style_(style), report_(run.call.guarded.report) {
    rapidjson::Document document;
    if (!document.Parse(report_.heard.c_str()).HasParseError()) heard_ = ReadHeard(document);
  }

  std::string Text() const {
    std::string text;
    if (heard_.has_value() && style_.terminal && !options_.noPlot) {
      text += "\n" + TerminalPlot(*heard_, TerminalWidth(), style_, ToneHz());
    }
    if (!report_.notHeard.empty()) text += fmt::format("\nNo plot: {}\n", text::Printable(report_.notHeard));
    if (isWritten_) text += fmt::format("\nplot: {}\n", text::Printable(*options_.plot));
    return text;
  }

  // Gives why the file that was asked for could not be written.
  std::optional<Failure> Write() {
    if (!options_.plot.has_value() || !heard_.has_value()) return std::nullopt;
    const std::string title = fmt::format("{}: {}", run_.Tested().name, JudgementWord(run_.judgement));
    try {
      WritePlot(*options_.plot, SvgPlot(*heard_, title, ToneHz()));
    } catch (const Failure& failure) {
      return failure;
    }
    isWritten_ = true;
    return std::nullopt;
  }

  JsonMembers Members() const {
    return {{"heard", heard_.has_value() ? report_.heard : "null"},
            {"notHeard", JsonTextOrNull(report_.notHeard)},
            {"plot", isWritten_ ? JsonString(*options_.plot) : "null"}};
  }

 private:
  // 0 without a tone.
  double ToneHz() const { return run_.render.has_value() ? kToneHz : 0.0; }

  const TestRun& run_;
  const Options& options_;
  const Style& style_;
  const CallReport& report_;
  std::optional<Heard> heard_;
  bool isWritten_ = false;
};

// Where it is shown, and where it can't be in the way: on a machine described in a file a call counts for the faults
// described there, and they are meant for the module.
bool IsListeningWanted(const Options& options, const std::string& platform, const Style& style) {
  if (options.plot.has_value()) return true;
  const bool isShown = !options.quiet && !options.noPlot && (options.json || style.terminal);
  return options.test == Test::kRecord && isShown && !platform.starts_with("virtual:");
}

}  // namespace

Answer TestEndpoints(const Options& options, const Style& style) {
  const PlatformChoice platform = ChosenPlatform(options);
  const Interruption interruption;
  const TestRun run = RunTest(options, platform.used, IsListeningWanted(options, platform.used, style), interruption,
                              {.label = options.test == Test::kPlay ? "playing" : "recording"});
  Plot plot(run, options, style);
  const std::optional<Failure> notWritten = plot.Write();

  Answer answer;
  Conclude(answer, run.call, run.Passed() ? ExitCode::kPass : ExitCode::kFail);
  const std::string restored = RestorationText(run.call.guarded.restoration);
  if (run.call.outcome.has_value()) {
    answer.text = RunText(run, style) + plot.Text() + LogText(run.call, options) + "\n" + restored + "\n";
  } else {
    answer.notes += LogText(run.call, options) + restored + "\n";
  }
  JsonMembers members = PlatformMembers(platform);
  Append(members, RunMembers(run, options));
  if (run.test == Test::kRecord) Append(members, plot.Members());
  Append(members, ReplyMembers(run.call));
  answer.result = JsonObject(members);
  if (notWritten.has_value()) {
    if (!answer.failure.has_value()) answer.failure = notWritten;
    if (answer.exitCode == ExitCode::kPass) answer.exitCode = notWritten->exitCode;
  }
  return answer;
}

}  // namespace host
