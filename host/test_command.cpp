#include <fmt/format.h>

#include "host/commands.h"
#include "host/endpoint_choice.h"
#include "host/json_output.h"
#include "host/platform.h"
#include "host/test_report.h"
#include "host/utf.h"

namespace host {
namespace {

constexpr double kBarFloor = -60.0;  // dBFS
constexpr int kBarCells = 40;

struct TestRun {
  Test test = Test::kPlay;
  const Endpoint* render = nullptr;
  const Endpoint* capture = nullptr;
  Outcome outcome;
  std::string reply;
};

std::string EndpointLine(const char* label, const Endpoint* endpoint) {
  if (endpoint == nullptr) return fmt::format("  {:<10} none: the test listens for three seconds\n", label);
  return fmt::format("  {:<10} {}\n  {:<10} {}\n", label, Printable(endpoint->name), "", Printable(endpoint->id));
}

std::string AmplitudeLines(double amplitude, const Style& style) {
  if (amplitude <= 0.0) return "  amplitude  0: the capture is silent\n";
  const double decibels = Decibels(amplitude);
  return fmt::format("  amplitude  {:.6f} of full scale, {:.1f} dBFS\n  {:<10} {} {:.0f} to 0 dBFS\n", amplitude,
                     decibels, "", Bar(1.0 - decibels / kBarFloor, kBarCells, style), kBarFloor);
}

std::string Text(const TestRun& run, const Style& style) {
  const bool passed = Passed(run.test, run.outcome);
  std::string text = fmt::format("{}  {} ({})\n\n", Verdict(passed, style), Printable(run.outcome.returnMessage),
                                 run.outcome.returnCode);
  if (run.test == Test::kRecord) text += EndpointLine("capture", run.capture);
  text += EndpointLine("render", run.render);
  if (run.test == Test::kRecord && passed) text += AmplitudeLines(run.outcome.maxAmplitude, style);
  text += fmt::format("  {:<10} {}\n", "log", Utf8FromPath(LogFile()));
  if (!passed) text += fmt::format("\n{}\n", AdviceFor(run.outcome));
  return text;
}

std::string EndpointJson(const Endpoint* endpoint) {
  if (endpoint == nullptr) return "null";
  return JsonObject({{"id", JsonString(endpoint->id)}, {"name", JsonString(endpoint->name)}});
}

std::string Result(const TestRun& run) {
  JsonMembers members = OutcomeMembers(run.test, run.outcome, run.reply);
  members.emplace_back("render", EndpointJson(run.render));
  if (run.test == Test::kRecord) {
    // Without a pass the reply holds no measurement.
    const bool measured = Passed(run.test, run.outcome);
    const double amplitude = run.outcome.maxAmplitude;
    members.emplace_back("capture", EndpointJson(run.capture));
    members.emplace_back("maxAmplitude", measured ? JsonNumber(amplitude) : "null");
    members.emplace_back("maxAmplitudeDbfs", measured ? JsonNumber(Decibels(amplitude)) : "null");
  }
  return JsonObject(members);
}

}  // namespace

Answer TestEndpoints(const Options& options, const Style& style) {
  const Platform platform(options.platform);
  const std::vector<Endpoint> endpoints = ReadEndpoints();
  TestRun run;
  std::string contract;
  if (options.command == Options::Command::kRecord) {
    run.test = Test::kRecord;
    run.capture = &ChooseEndpoint(endpoints, Flow::kCapture, options.endpoint);
    if (options.render.has_value()) run.render = &ChooseEndpoint(endpoints, Flow::kRender, options.render);
    contract = BuildContract(Test::kRecord, run.capture->id, run.render != nullptr ? run.render->id : "");
  } else {
    run.render = &ChooseEndpoint(endpoints, Flow::kRender, options.endpoint);
    contract = BuildContract(Test::kPlay, run.render->id, "");
  }

  const Module module(options.module ? PathFromUtf8(*options.module) : DefaultModuleFile());
  run.reply = CallModule(module, run.test, contract, options.quiet);
  const std::optional<Outcome> outcome = ReadReply(run.reply);
  if (!outcome.has_value()) throw UnreadableReply();
  run.outcome = *outcome;

  Answer answer;
  answer.exitCode = ExitCodeOf(run.test, run.outcome);
  answer.text = Text(run, style);
  answer.result = Result(run);
  return answer;
}

}  // namespace host
