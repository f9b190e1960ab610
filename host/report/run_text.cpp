#include "host/report/run_text.h"

#include <fmt/format.h>

#include "text/utf.h"

namespace host {
namespace {

constexpr double kBarFloor = -60.0;  // dBFS
constexpr int kBarCells = 40;

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

std::string LimitsLine(const Limits& limits) {
  if (!limits.minPeak.has_value() && !limits.maxPeak.has_value()) return "";
  std::vector<std::string> sides;
  if (limits.minPeak.has_value()) sides.push_back(fmt::format("at least {}", *limits.minPeak));
  if (limits.maxPeak.has_value()) sides.push_back(fmt::format("at most {}", *limits.maxPeak));
  return fmt::format("  {:<10} {}\n", "limits", fmt::join(sides, ", "));
}

}  // namespace

std::string RunText(const RunRecord& run, const Style& style) {
  const Outcome& outcome = *run.outcome;
  const std::string sentence = JudgementText(run.judgement, outcome, run.limits);
  std::string text =
      fmt::format("{}  {} ({})\n\n", Verdict(run.Passed(), style), text::Printable(sentence), outcome.returnCode);
  if (run.test == Test::kRecord) text += EndpointLine("capture", run.capture);
  text += EndpointLine("render", run.render);
  if (const std::optional<double> peak = run.Peak()) text += AmplitudeLines(*peak, style) + LimitsLine(run.limits);
  text += fmt::format("  {:<10} {:.2f} s\n", "time", run.call.seconds.value_or(0.0));
  text += fmt::format("  {:<10} {}\n", "log", run.log);
  if (!run.Passed()) text += fmt::format("\n{}\n", AdviceFor(run.judgement, outcome));
  return text;
}

std::string LogText(const RunRecord& run) {
  if (!run.logLines.has_value()) return "";
  std::string text = fmt::format("\n{} lines came to the log meanwhile{}\n", run.logLines->size(),
                                 run.logLines->empty() ? "." : "; other programs' can be among them:");
  for (const std::string& line : *run.logLines) text += "  " + text::Printable(text::ValidUtf8(line)) + "\n";
  return text;
}

}  // namespace host
