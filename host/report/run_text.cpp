#include "host/report/run_text.h"

#include <fmt/core.h>

#include "host/report/check_rows.h"
#include "text/utf.h"

namespace host {
namespace {

constexpr double kBarFloor = -60.0;  // dBFS
constexpr int kBarCells = 40;
constexpr int kReasonIndent = 6;

std::string EndpointLine(const char* label, const std::optional<Endpoint>& endpoint) {
  if (!endpoint.has_value()) return fmt::format("  {:<10} none: the test listens for three seconds\n", label);
  return fmt::format("  {:<10} {}\n  {:<10} {}\n", label, text::Printable(endpoint->name), "",
                     text::Printable(endpoint->id));
}

std::string AmplitudeLines(double amplitude, const Style& style) {
  if (amplitude <= 0.0) return "  amplitude  0: the capture is silent\n";
  const double decibels = Decibels(amplitude);
  return fmt::format("  amplitude  {:.6f} of full scale, {:.1f} dBFS\n  {:<10} {} {:.0f} to 0 dBFS\n", amplitude,
                     decibels, "", Bar(1.0 - decibels / kBarFloor, kBarCells, style), kBarFloor);
}

// A line for each figure, in columns; and the advice below a check that failed, unless it is the verdict's own.
std::string ChecksText(const Verdict& verdict, const Style& style) {
  constexpr int kIndent = 23;
  std::string text;
  for (const CheckRow& row : CheckRows(verdict)) {
    const std::string figures =
        row.measured.empty() ? row.what : fmt::format("{:<36} {:>9}   {}", row.what, row.measured, row.limit);
    const std::string line = fmt::format("  {:<13}  {:<5} {}", row.check, row.result, figures);
    text += Wrapped(text::Printable(line), style, kIndent) + "\n";
  }
  for (const Check& check : verdict.checks) {
    if (check.result != CheckResult::kFail || check.sentence == verdict.sentence) continue;
    const std::string line = fmt::format("{}: {} {}", check.name, check.sentence, check.advice);
    text += "\n" + Wrapped(text::Printable(line), style) + "\n";
  }
  return text;
}

}  // namespace

std::string RunText(const RunRecord& run, const Style& style) {
  const Outcome& outcome = *run.outcome;
  std::string reason = text::Printable(run.verdict.sentence);
  // Beside a failure that the host found, the module's code for a pass would look like its reason.
  if (run.Passed() || !Passed(run.test, outcome)) reason += fmt::format(" ({})", outcome.returnCode);
  std::string text = PassOrFail(run.Passed(), style) + "  " + Wrapped(reason, style, kReasonIndent) + "\n";
  if (!run.verdict.advice.empty()) text += "\n" + Wrapped(text::Printable(run.verdict.advice), style) + "\n";
  if (!run.verdict.caution.empty()) text += "\n" + Wrapped(text::Printable(run.verdict.caution), style) + "\n";
  text += "\n";
  if (run.test == Test::kRecord) text += EndpointLine("capture", run.capture);
  text += EndpointLine("render", run.render);
  if (const std::optional<double> peak = run.Peak()) text += AmplitudeLines(*peak, style);
  text += fmt::format("  {:<10} {:.2f} s\n", "time", run.call.seconds.value_or(0.0));
  text += fmt::format("  {:<10} {}\n", "log", text::Printable(run.log));
  if (!run.verdict.checks.empty()) text += "\n" + ChecksText(run.verdict, style);
  return text;
}

std::string LogText(const RunRecord& run) {
  if (!run.logLines.has_value()) return "";
  std::string text = fmt::format("\n{} lines came to the log meanwhile{}\n", run.logLines->size(),
                                 run.logLines->empty() ? "." : "; other programs' can be among them:");
  for (const std::string& line : *run.logLines) text += "  " + text::Printable(line) + "\n";
  return text;
}

}  // namespace host
