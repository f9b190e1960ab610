#include "host/commands/guarded_run.h"

#include <fmt/core.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <utility>

#include "host/base/log_directory.h"
#include "host/call/guarded_call.h"
#include "host/call/log_excerpt.h"
#include "host/call/log_fault.h"
#include "host/call/module.h"
#include "host/endpoints/endpoint_choice.h"
#include "host/endpoints/platform.h"
#include "text/utf.h"

namespace host {
namespace {

// How long the module takes: its tone has a second, and a test that only listens takes three.
std::chrono::duration<double> UsualTime(const CallRequest& request) {
  const bool onlyListens =
      request.test == Test::kRecord && EndpointsNamedIn(request.test, request.contract).render.empty();
  return std::chrono::duration<double>(onlyListens ? 3.1 : 1.1);
}

Guarding GuardingOf(const Options& options) {
  const auto tell = [isTold = !options.quiet && !options.json](const std::string& busy) {
    if (isTold) std::fprintf(stderr, "rmthost: %s; waiting.\n", text::Printable(busy).c_str());
  };
  return {.timeout = std::chrono::duration<double>(options.timeout),
          .wait = std::chrono::duration<double>(options.wait),
          .tellOfWait = tell};
}

void ChooseEndpoints(const Options& options, RunRecord& run) {
  const Platform connection(run.platform);
  const std::vector<Endpoint> endpoints = ReadEndpoints();
  if (run.test == Test::kPlay) {
    run.render = ChooseEndpoint(endpoints, Flow::kRender, options.endpoint);
    return;
  }
  run.capture = ChooseEndpoint(endpoints, Flow::kCapture, options.endpoint);
  if (options.render.has_value()) run.render = ChooseEndpoint(endpoints, Flow::kRender, options.render);
}

// Both tests log under this name.
bool IsModules(const std::string& line) { return line.ends_with("[ZQ_RMT_TESTS_AUDIO::AudioRecordTestClass]"); }

}  // namespace

std::string ModuleFile(const Options& options) {
  return options.module.has_value() ? *options.module : text::Utf8FromPath(DefaultModuleFile());
}

void RunModule(const CallRequest& request, const Options& options, const Interruption& interruption,
               const Progress::Span& span, RunRecord& run) {
  const LogExcerpt log(LogFile());
  {
    std::optional<Progress> progress;
    if (!options.quiet) progress.emplace(span, UsualTime(request));
    run.call = CallGuarded(request, GuardingOf(options), interruption);
  }
  run.log = text::Utf8FromPath(LogFile());
  run.logMoved = ChosenLog().moved;
  std::vector<std::string> lines = log.Lines();
  if (std::none_of(lines.begin(), lines.end(), IsModules)) run.logMissing = LogFault(ChosenLog().directory);
  if (options.verbose || options.report.has_value() || options.junit.has_value()) run.logLines = std::move(lines);
  run.failure = run.call.failure;
  if (run.failure.has_value() || !run.call.reply.has_value()) return;
  run.outcome = ReadOutcome(*run.call.reply);
  if (!run.outcome.has_value()) {
    run.failure = UnreadableReply();
    return;
  }
  const Evidence evidence{.tonePlays = run.render.has_value(),
                          .maxAmplitude = run.outcome->maxAmplitude,
                          .findings = run.call.findings.has_value() ? &*run.call.findings : nullptr,
                          .notHeard = run.call.notHeard.value_or(""),
                          .requiresListening = options.requireListening};
  run.verdict = Judge(run.test, *run.outcome, run.call.refused, evidence, run.limits);
}

std::string LogNotes(const RunRecord& run) {
  std::string notes;
  for (const std::string& note : {run.logMoved, run.logMissing}) {
    if (!note.empty()) notes += fmt::format("rmthost: {}\n", text::Printable(note));
  }
  return notes;
}

void Conclude(const RunRecord& run, CommandResult& result) {
  result.notes += LogNotes(run);
  result.exitCode = run.Passed() ? ExitCode::kPass : ExitCode::kFail;
  if (run.failure.has_value()) {
    result.failure = run.failure;
    result.exitCode = run.failure->exitCode;
  }
  if (run.call.restored.Summary() != Restoration::State::kNo) return;
  if (result.exitCode == ExitCode::kBroken || result.exitCode == ExitCode::kInterrupted) return;
  if (result.failure.has_value()) result.notes += FailureText(*result.failure);
  result.failure = NotRestored(run.call.restored);
  result.exitCode = ExitCode::kNotRestored;
}

RunRecord NewRun(const Options& options, const Limits& limits) {
  RunRecord run;
  run.test = options.test;
  run.asked = Word(options.test);
  if (options.endpoint.has_value()) run.asked += " " + *options.endpoint;
  if (options.render.has_value()) run.asked += " --render " + *options.render;
  run.began = std::time(nullptr);
  run.platform = options.platform;
  run.module = ModuleFile(options);
  run.limits = LimitsInForce(limits, options.render.has_value());
  return run;
}

void RunOnEndpoints(const Options& options, const Interruption& interruption, const Progress::Span& span,
                    const std::optional<std::string>& saveTo, RunRecord& run) {
  ChooseEndpoints(options, run);
  const ContractEndpoints ids{.capture = run.capture.has_value() ? run.capture->id : "",
                              .render = run.render.has_value() ? run.render->id : ""};
  CallRequest request{.platform = run.platform,
                      .module = run.module,
                      .test = run.test,
                      .contract = BuildContract(run.test, ids),
                      .listenTo = {},
                      .saveTo = saveTo};
  if (run.capture.has_value()) request.listenTo = run.capture->id;
  RunModule(request, options, interruption, span, run);
}

}  // namespace host
