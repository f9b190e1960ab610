#include "host/commands/test_run.h"

#include <fmt/format.h>

#include "host/call/module.h"
#include "host/endpoints/endpoint_choice.h"
#include "text/utf.h"

namespace host {
namespace {

constexpr double kBarFloor = -60.0;  // dBFS
constexpr int kBarCells = 40;

Limits LimitsOf(const Options& options) {
  Limits limits = options.limits;
  if (options.test == Test::kPlay || !options.render.has_value()) return limits;
  if (!limits.minPeak.has_value()) limits.minPeak = kDefaultMinPeak;
  if (!limits.maxPeak.has_value()) limits.maxPeak = kDefaultMaxPeak;
  return limits;
}

void ChooseEndpoints(const Options& options, const std::string& platform, TestRun& run) {
  const Platform thread(platform);
  const std::vector<Endpoint> endpoints = ReadEndpoints();
  if (run.test == Test::kPlay) {
    run.render = ChooseEndpoint(endpoints, Flow::kRender, options.endpoint);
    return;
  }
  run.capture = ChooseEndpoint(endpoints, Flow::kCapture, options.endpoint);
  if (options.render.has_value()) run.render = ChooseEndpoint(endpoints, Flow::kRender, options.render);
}

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

std::string EndpointJson(const std::optional<Endpoint>& endpoint) {
  if (!endpoint.has_value()) return "null";
  return JsonObject({{"id", JsonString(endpoint->id)}, {"name", JsonString(endpoint->name)}});
}

std::string NumberOrNull(const std::optional<double>& number) {
  return number.has_value() ? JsonNumber(*number) : "null";
}

}  // namespace

std::optional<double> TestRun::Peak() const {
  const bool measured = test == Test::kRecord && call.outcome.has_value() && host::Passed(test, *call.outcome);
  return measured ? std::optional(call.outcome->maxAmplitude) : std::nullopt;
}

TestRun RunTest(const Options& options, const std::string& platform, bool listen, const Interruption& interruption,
                const ProgressSpan& span) {
  TestRun run;
  run.test = options.test;
  run.limits = LimitsOf(options);
  ChooseEndpoints(options, platform, run);
  const std::string renderId = run.render.has_value() ? run.render->id : "";
  const std::string id = run.Tested().id;
  run.call = CallModule({.platform = platform,
                         .module = ModuleFile(options),
                         .test = run.test,
                         .contract = BuildContract(run.test, id, renderId),
                         .listenTo = listen ? id : ""},
                        options, interruption, span);
  if (run.call.outcome.has_value()) run.judgement = Judge(run.test, *run.call.outcome, run.limits);
  return run;
}

std::string RunText(const TestRun& run, const Style& style) {
  const Outcome& outcome = *run.call.outcome;
  const std::string sentence = JudgementText(run.judgement, outcome, run.limits);
  std::string text =
      fmt::format("{}  {} ({})\n\n", Verdict(run.Passed(), style), text::Printable(sentence), outcome.returnCode);
  if (run.test == Test::kRecord) text += EndpointLine("capture", run.capture);
  text += EndpointLine("render", run.render);
  if (const std::optional<double> peak = run.Peak()) text += AmplitudeLines(*peak, style) + LimitsLine(run.limits);
  text += fmt::format("  {:<10} {:.2f} s\n", "time", run.call.guarded.report.seconds.value_or(0.0));
  text += fmt::format("  {:<10} {}\n", "log", text::Utf8FromPath(LogFile()));
  if (!run.Passed()) text += fmt::format("\n{}\n", AdviceFor(run.judgement, outcome));
  return text;
}

JsonMembers RunMembers(const TestRun& run, const Options& options) {
  JsonMembers members;
  if (const std::optional<Outcome>& outcome = run.call.outcome) {
    members = {{"passed", JsonBool(run.Passed())},
               {"verdict", JsonString(JudgementWord(run.judgement))},
               {"returnCode", std::to_string(outcome->returnCode)},
               {"returnMessage", JsonString(outcome->returnMessage)},
               {"advice", JsonTextOrNull(AdviceFor(run.judgement, *outcome))}};
  }
  members.emplace_back("render", EndpointJson(run.render));
  if (run.test == Test::kRecord) {
    const std::optional<double> peak = run.Peak();
    members.emplace_back("capture", EndpointJson(run.capture));
    members.emplace_back("limits", JsonObject({{"minPeak", NumberOrNull(run.limits.minPeak)},
                                               {"maxPeak", NumberOrNull(run.limits.maxPeak)}}));
    members.emplace_back("maxAmplitude", NumberOrNull(peak));
    members.emplace_back("maxAmplitudeDbfs", peak.has_value() ? JsonNumber(Decibels(*peak)) : "null");
  }
  Append(members, CallMembers(run.call, options));
  return members;
}

}  // namespace host
