#include <fmt/core.h>

#include <utility>

#include "host/base/output_file.h"
#include "host/base/system.h"
#include "host/commands/commands.h"
#include "host/commands/guarded_run.h"
#include "host/commands/results_file.h"
#include "host/endpoints/platform.h"
#include "host/report/report_page.h"
#include "host/report/run_json.h"
#include "host/report/run_text.h"
#include "host/report/run_words.h"
#include "host/report/svg_plot.h"
#include "host/report/terminal_plot.h"
#include "text/utf.h"

namespace host {
namespace {

// The files that the options name, all of them found to be writable before a tone is played.
struct OutputFiles {
  explicit OutputFiles(const Options& options) : results(options) {
    if (options.plot.has_value()) plot.emplace(*options.plot, ".svg", "--plot");
    if (options.report.has_value()) report.emplace(*options.report, ".html", "--report");
    if (options.save.has_value()) save.emplace(*options.save, ".wav", "--save");
  }

  std::optional<OutputFile> plot, report, save;
  ResultsFile results;
};

// Writes the files that were asked for and that there is something for, and notes them in `run`. Gives why the first that
// could not be written couldn't.
std::optional<Failure> WriteFiles(OutputFiles& files, RunRecord& run) {
  std::optional<Failure> failure;
  const auto attempt = [&failure](const auto& write) {
    try {
      write();
    } catch (const Failure& reason) {
      if (!failure.has_value()) failure = reason;
    }
  };
  const auto finish = [&](std::optional<OutputFile>& file, std::optional<std::string>& written, const auto& fill) {
    if (!file.has_value()) return;
    attempt([&] {
      fill(*file);
      file->Commit();
      written = file->Name();
    });
  };
  if (run.call.saved || run.call.notSaved.has_value()) {
    finish(files.save, run.save, [&](const OutputFile& file) {
      if (run.call.notSaved.has_value()) throw file.NotWritten(*run.call.notSaved);
    });
  }
  if (run.call.heard.has_value()) {
    finish(files.plot, run.plot, [&](const OutputFile& file) { file.Write(SvgPlot(run)); });
  }
  // Whoever interrupts a test wants none of it in the place of the report before.
  if (run.WasInterrupted()) return failure;
  finish(files.report, run.report, [&](const OutputFile& file) { file.Write(ReportPage(run)); });
  attempt([&] {
    files.results.Add(run);
    run.junit = files.results.Write();
  });
  return failure;
}

std::string PlotText(const RunRecord& run, const Options& options, const Style& style) {
  std::string text;
  if (run.call.heard.has_value() && style.terminal && !options.noPlot) {
    text += "\n" + TerminalPlot(*run.call.heard, style, ToneHz(run));
  }
  if (run.call.notHeard.has_value()) text += fmt::format("\nNot heard: {}\n", text::Printable(*run.call.notHeard));
  return text;
}

std::string FilesText(const RunRecord& run) {
  std::string text;
  const auto add = [&](const char* what, const std::optional<std::string>& file) {
    if (!file.has_value()) return;
    text += fmt::format("{}{}: {}\n", text.empty() ? "\n" : "", what, text::Printable(*file));
  };
  add("plot", run.plot);
  add("report", run.report);
  add("sound", run.save);
  add("junit", run.junit);
  return text;
}

}  // namespace

CommandResult PlayOrRecord(const Options& options, const Style& style) {
  // Before requests to end are only taken note of: it may wait for standard input.
  const Limits limits = LimitsGiven(options);
  const Interruption interruption;
  OutputFiles files(options);
  RunRecord run = NewRun(options, limits);
  const std::optional<std::string> saveTo =
      files.save.has_value() ? std::optional(files.save->Temporary()) : std::nullopt;
  const char* const label = options.test == Test::kPlay ? "playing" : "recording";
  try {
    run.platform = ChoosePlatform(options.platform);
    RunOnEndpoints(options, interruption, {.label = label}, saveTo, run);
  } catch (const Failure& failure) {
    files.results.WriteUnbegun(std::move(run), failure);
    throw;
  }
  const std::optional<Failure> notWritten = WriteFiles(files, run);
  // A report and the results have the log always.
  if (!options.verbose) run.logLines.reset();

  CommandResult result;
  Conclude(run, result);
  const std::string restored = RestorationText(run.call.restored) + "\n";
  if (run.outcome.has_value()) {
    result.text = RunText(run, style) + PlotText(run, options, style) + FilesText(run) + LogText(run) + "\n" + restored;
  } else {
    result.notes += LogText(run) + restored + FilesText(run);
  }
  result.json = RunJson(run.platform, run, options.plotData);
  if (!result.failure.has_value()) result.failure = notWritten;
  return result;
}

}  // namespace host
