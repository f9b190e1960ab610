#include "host/commands/guarded_run.h"

#include <chrono>

#include "host/call/guarded_call.h"
#include "host/call/log_excerpt.h"
#include "host/call/module.h"
#include "host/endpoints/endpoint_choice.h"
#include "host/endpoints/platform.h"
#include "text/utf.h"

namespace host {
namespace {

Limits LimitsOf(const Options& options) {
  Limits limits = options.limits;
  if (options.test == Test::kPlay || !options.render.has_value()) return limits;
  if (!limits.minPeak.has_value()) limits.minPeak = kDefaultMinPeak;
  if (!limits.maxPeak.has_value()) limits.maxPeak = kDefaultMaxPeak;
  return limits;
}

void ChooseEndpoints(const Options& options, const std::string& platform, RunRecord& run) {
  const Platform connection(platform);
  const std::vector<Endpoint> endpoints = ReadEndpoints();
  if (run.test == Test::kPlay) {
    run.render = ChooseEndpoint(endpoints, Flow::kRender, options.endpoint);
    return;
  }
  run.capture = ChooseEndpoint(endpoints, Flow::kCapture, options.endpoint);
  if (options.render.has_value()) run.render = ChooseEndpoint(endpoints, Flow::kRender, options.render);
}

}  // namespace

std::string ModuleFile(const Options& options) {
  return options.module.has_value() ? *options.module : text::Utf8FromPath(DefaultModuleFile());
}

void RunModule(const CallRequest& request, const Options& options, const Interruption& interruption,
               const Progress::Span& span, RunRecord& run) {
  const LogExcerpt log(LogFile());
  {
    std::optional<Progress> progress;
    if (!options.quiet) progress.emplace(span, LogFile());
    run.call = CallGuarded(request, std::chrono::duration<double>(options.timeout), interruption);
  }
  run.log = text::Utf8FromPath(LogFile());
  if (options.verbose) run.logLines = log.Lines();
  run.failure = run.call.failure;
  if (run.failure.has_value() || !run.call.reply.has_value()) return;
  run.outcome = ReadOutcome(*run.call.reply);
  if (!run.outcome.has_value()) {
    run.failure = UnreadableReply();
    return;
  }
  run.judgement = Judge(run.test, *run.outcome, run.limits);
}

void Conclude(const RunRecord& run, CommandResult& result) {
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

RunRecord RunOnEndpoints(const Options& options, const std::string& platform, Listen listen,
                         const Interruption& interruption, const Progress::Span& span) {
  RunRecord run;
  run.test = options.test;
  run.limits = LimitsOf(options);
  ChooseEndpoints(options, platform, run);
  const ContractEndpoints ids{.capture = run.capture.has_value() ? run.capture->id : "",
                              .render = run.render.has_value() ? run.render->id : ""};
  CallRequest request{.platform = platform,
                      .module = ModuleFile(options),
                      .test = run.test,
                      .contract = BuildContract(run.test, ids),
                      .listenTo = {}};
  if (listen == Listen::kYes) request.listenTo = run.Tested().id;
  RunModule(request, options, interruption, span, run);
  return run;
}

}  // namespace host
