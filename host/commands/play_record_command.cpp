#include <fmt/format.h>

#include <filesystem>
#include <fstream>

#include "host/base/system.h"
#include "host/commands/commands.h"
#include "host/commands/guarded_run.h"
#include "host/endpoints/platform.h"
#include "host/report/run_json.h"
#include "host/report/run_text.h"
#include "host/report/svg_plot.h"
#include "host/report/terminal_plot.h"
#include "text/utf.h"

namespace host {
namespace {

constexpr double kToneHz = 1200.0;  // of the record test

// 0 without a tone.
double ToneHz(const RunRecord& run) { return run.render.has_value() ? kToneHz : 0.0; }

// Writes a drawing: the file is there as a whole, or as it was before. Throws Failure.
void WritePlot(const std::string& file, const std::string& drawing) {
  const std::filesystem::path path = text::PathFromUtf8(file);
  const std::filesystem::path part = text::PathFromUtf8(file + ".part");
  std::ofstream stream(part, std::ios::binary);
  stream << drawing;
  stream.close();
  std::error_code error;
  if (stream) std::filesystem::rename(part, path, error);
  if (stream && !error) return;
  std::filesystem::remove(part, error);
  throw Failure(ExitCode::kBroken, fmt::format("The plot can't be written to '{}'.", file),
                "Give --plot a file in a folder that is there and can be written to.");
}

// Draws into the file that was asked for, and notes it in `run`. Gives why it could not be written.
std::optional<Failure> DrawPlot(const Options& options, RunRecord& run) {
  if (!options.plot.has_value() || !run.call.heard.has_value()) return std::nullopt;
  const std::string title = fmt::format("{}: {}", run.Tested().name, run.verdict.word);
  try {
    WritePlot(*options.plot, SvgPlot(*run.call.heard, title, ToneHz(run)));
  } catch (const Failure& failure) {
    return failure;
  }
  run.plot = options.plot;
  return std::nullopt;
}

std::string PlotText(const RunRecord& run, const Options& options, const Style& style) {
  std::string text;
  if (run.call.heard.has_value() && style.terminal && !options.noPlot) {
    text += "\n" + TerminalPlot(*run.call.heard, style, ToneHz(run));
  }
  if (run.call.notHeard.has_value()) text += fmt::format("\nNot heard: {}\n", text::Printable(*run.call.notHeard));
  if (run.plot.has_value()) text += fmt::format("\nplot: {}\n", text::Printable(*run.plot));
  return text;
}

}  // namespace

CommandResult PlayOrRecord(const Options& options, const Style& style) {
  const std::string platform = ChoosePlatform(options.platform);
  const Interruption interruption;
  RunRecord run =
      RunOnEndpoints(options, platform, interruption, {.label = options.test == Test::kPlay ? "playing" : "recording"});
  const std::optional<Failure> notDrawn = DrawPlot(options, run);

  CommandResult result;
  Conclude(run, result);
  const std::string restored = RestorationText(run.call.restored) + "\n";
  if (run.outcome.has_value()) {
    result.text = RunText(run, style) + PlotText(run, options, style) + LogText(run) + "\n" + restored;
  } else {
    result.notes += LogText(run) + restored;
  }
  result.json = RunJson(platform, run, options.plotData);
  if (notDrawn.has_value()) {
    if (!result.failure.has_value()) result.failure = notDrawn;
    if (result.exitCode == ExitCode::kPass) result.exitCode = notDrawn->exitCode;
  }
  return result;
}

}  // namespace host
