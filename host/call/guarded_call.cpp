#include "host/call/guarded_call.h"

#include <fmt/core.h>

#include <thread>

#include "host/base/json.h"
#include "host/call/child_process.h"
#include "host/call/module_call.h"
#include "host/endpoints/platform.h"
#include "host/restoring/endpoint_locks.h"
#include "host/restoring/guardian.h"
#include "host/restoring/left_runs.h"
#include "host/restoring/put_back_in_time.h"
#include "host/restoring/settings_record.h"

namespace host {
namespace {

using Seconds = std::chrono::duration<double>;

std::optional<Failure> FailureOf(const ChildEnd& end, Seconds timeout) {
  switch (end.how) {
    case ChildEnd::How::kTimedOut:
      return Failure(ExitCode::kTimedOut,
                     fmt::format("The module took longer than {} s, and was ended.", timeout.count()),
                     "If it only needs more time, give it that with --timeout SECONDS.");
    case ChildEnd::How::kInterrupted:
      return Failure(ExitCode::kInterrupted, "Interrupted: the module was ended in the middle of its call.",
                     "There is no result.");
    case ChildEnd::How::kCrashed:
      return Failure(ExitCode::kBroken, fmt::format("The module crashed: {}.", end.crash),
                     "Its log may tell how far it came; 'rmthost version' shows the module and the log.");
    case ChildEnd::How::kExited: break;
  }
  if (end.exitCode == 0 && !end.output.empty()) return std::nullopt;
  return Failure(ExitCode::kBroken, fmt::format("The module ended its process, with exit code {}.", end.exitCode),
                 "Check with 'rmthost version' that this is the right module.");
}

Failure NotUnderstood() {
  return {ExitCode::kBroken, "The processes of rmthost don't understand each other.",
          "Try again; if it stays, report it with what was typed."};
}

CallReport ReportOf(const ChildEnd& end, Seconds timeout) {
  CallReport report;
  report.called = true;
  report.restored.notNeeded = "the virtual machine ended with the module's process";
  report.failure = FailureOf(end, timeout);
  if (report.failure.has_value()) return report;
  const std::optional<CallReport> reported = ReadJson<CallReport>(end.output);
  if (reported.has_value() && (reported->called || reported->failure.has_value())) return *reported;
  report.failure = NotUnderstood();
  return report;
}

std::vector<Endpoint> SettingsBefore(const CallRequest& request) {
  const Platform platform(request.platform);
  return ReachedEndpoints(ReadEndpoints(), request);
}

CallReport CallInChild(const CallRequest& request, Seconds timeout, const Interruption& interruption,
                       ChildEnd::How* how = nullptr) {
  const ChildEnd end =
      RunSelf(kModuleProcess, TextOf(ModuleRequest{.call = request, .check = {}}), timeout, interruption);
  if (how != nullptr) *how = end.how;
  CallReport report = ReportOf(end, timeout);
  if (!report.called) throw Failure(*report.failure);
  return report;
}

// What a process that was ended had sent, a sound server may carry out a little later.
constexpr std::chrono::milliseconds kSettling{100};

}  // namespace

CallReport CallGuarded(const CallRequest& request, const Guarding& guarding, const Interruption& interruption) {
  if (EndsWithProcess(request.platform)) return CallInChild(request, guarding.timeout, interruption);

  const std::string platform = LastingPlatform(request.platform);
  const EndpointLocks locks =
      EndpointLocks::Take(SettingsBefore(request), guarding.wait, guarding.tellOfWait, interruption);
  // What a run left that died just now, while this one waited for it, isn't how a person had it.
  LookAtLeftRuns(LeftRuns::kPutBack, platform, locks);
  const std::vector<Endpoint> saved = SettingsBefore(request);
  if (saved.empty()) {
    CallReport report = CallInChild(request, guarding.timeout, interruption);
    report.restored = PutBackInTime(platform, saved);
    return report;
  }

  SettingsRecord record = SettingsRecord::Keep(SettingsOf(platform, saved));
  Guardian guardian(record.File());
  ChildEnd::How how = ChildEnd::How::kExited;
  CallReport report = CallInChild(request, guarding.timeout, interruption, &how);
  if (how != ChildEnd::How::kExited) std::this_thread::sleep_for(kSettling);
  report.restored = PutBackInTime(platform, saved);
  // Otherwise the guardian goes on for a while, and the record stays for 'rmthost restore' and for whoever runs next.
  if (report.restored.Summary() != Restoration::State::kNo) {
    record.Remove();
    guardian.Dismiss();
  }
  return report;
}

CommandResult CheckGuarded(const CheckRequest& request, Seconds timeout) {
  const Interruption interruption;
  const ChildEnd end =
      RunSelf(kModuleProcess, TextOf(ModuleRequest{.call = {}, .check = request}), timeout, interruption);
  if (const std::optional<Failure> failure = FailureOf(end, timeout)) throw Failure(*failure);
  const std::optional<CommandResult> result = ReadJson<CommandResult>(end.output);
  return result.has_value() ? *result : throw NotUnderstood();
}

}  // namespace host
