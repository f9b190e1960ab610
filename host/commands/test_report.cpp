#include "host/commands/test_report.h"

#include <fmt/format.h>

#include <cstdio>

#include "host/call/module.h"
#include "host/report/log_excerpt.h"
#include "host/report/progress.h"
#include "text/utf.h"

namespace host {

PlatformChoice ChosenPlatform(const Options& options) {
  PlatformChoice platform = ChoosePlatform(options.platform);
  if (!platform.note.empty()) std::fprintf(stderr, "rmthost: %s\n", text::Printable(platform.note).c_str());
  return platform;
}

JsonMembers PlatformMembers(const PlatformChoice& platform) {
  return {{"platform", JsonString(platform.used)},
          {"platformAsked", JsonString(platform.asked)},
          {"platformNote", JsonTextOrNull(platform.note)}};
}

std::string ModuleFile(const Options& options) {
  return options.module.has_value() ? *options.module : text::Utf8FromPath(DefaultModuleFile());
}

TestCall CallModule(const CallRequest& request, const Options& options, const Interruption& interruption,
                    const ProgressSpan& span) {
  TestCall call;
  const LogExcerpt log(LogFile());
  {
    std::optional<Progress> progress;
    if (!options.quiet) progress.emplace(span.label, LogFile(), span.start, span.end);
    call.guarded = CallGuarded(request, std::chrono::duration<double>(options.timeout), interruption);
  }
  if (options.verbose) call.logLines = log.Lines();
  const CallReport& report = call.guarded.report;
  call.failure = report.failure;
  if (report.reply.has_value() && !call.failure.has_value()) {
    call.outcome = ReadReply(*report.reply);
    if (!call.outcome.has_value()) call.failure = UnreadableReply();
  }
  return call;
}

void Conclude(Answer& answer, const TestCall& call, ExitCode exitCode) {
  answer.exitCode = exitCode;
  if (call.failure.has_value()) {
    answer.failure = call.failure;
    answer.exitCode = call.failure->exitCode;
  }
  const Restoration& restoration = call.guarded.restoration;
  if (restoration.Summary() != Restoration::State::kNo) return;
  if (answer.exitCode == ExitCode::kBroken || answer.exitCode == ExitCode::kInterrupted) return;
  if (answer.failure.has_value()) answer.notes += FailureText(*answer.failure);
  answer.failure = NotRestored(restoration);
  answer.exitCode = ExitCode::kNotRestored;
}

JsonMembers CallMembers(const TestCall& call, const Options& options) {
  const CallReport& report = call.guarded.report;
  JsonMembers members = {{"seconds", report.seconds.has_value() ? JsonNumber(*report.seconds) : "null"},
                         {"restored", RestorationJson(call.guarded.restoration)},
                         {"log", JsonString(text::Utf8FromPath(LogFile()))}};
  if (options.verbose) {
    std::vector<std::string> lines;
    for (const std::string& line : call.logLines) lines.push_back(JsonString(line));
    members.emplace_back("logLines", JsonArray(lines));
  }
  return members;
}

JsonMembers ReplyMembers(const TestCall& call) {
  // Only what was found to be JSON goes into the document as it is.
  if (!call.outcome.has_value()) return {};
  return {{"reply", *call.guarded.report.reply}};
}

JsonMembers OutcomeMembers(Test test, const Outcome& outcome) {
  const bool passed = Passed(test, outcome);
  return {{"passed", JsonBool(passed)},
          {"returnCode", std::to_string(outcome.returnCode)},
          {"returnMessage", JsonString(outcome.returnMessage)},
          {"advice", passed ? "null" : JsonString(AdviceFor(outcome))}};
}

std::string LogText(const TestCall& call, const Options& options) {
  if (!options.verbose) return "";
  std::string text = fmt::format("\n{} lines came to the log meanwhile{}\n", call.logLines.size(),
                                 call.logLines.empty() ? "." : "; other programs' can be among them:");
  for (const std::string& line : call.logLines) text += "  " + text::Printable(text::ValidUtf8(line)) + "\n";
  return text;
}

Failure UnreadableReply() {
  return Failure(ExitCode::kBroken, "The module's reply isn't a data contract with an outcome.",
                 "Check with 'rmthost version' that this is the right module.");
}

}  // namespace host
