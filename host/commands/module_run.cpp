#include "host/commands/module_run.h"

#include <chrono>
#include <cstdio>

#include "host/call/guarded_call.h"
#include "host/call/log_excerpt.h"
#include "host/call/module.h"
#include "text/utf.h"

namespace host {

PlatformChoice ChosenPlatform(const Options& options) {
  PlatformChoice platform = ChoosePlatform(options.platform);
  if (platform.note.has_value()) std::fprintf(stderr, "rmthost: %s\n", text::Printable(*platform.note).c_str());
  return platform;
}

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

}  // namespace host
