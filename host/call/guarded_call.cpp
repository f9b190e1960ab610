#include "host/call/guarded_call.h"

#include <fmt/format.h>

#include <future>
#include <thread>

#include "host/base/json.h"
#include "host/call/child_process.h"
#include "host/call/module_call.h"
#include "host/endpoints/platform.h"

namespace host {
namespace {

using Seconds = std::chrono::duration<double>;

// Longer than the platforms need to find out that the audio system is gone.
constexpr std::chrono::seconds kRestoreTime{15};

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

// On a connection of its own, as the audio system may have gone and come back; and on a thread of its own, as the audio
// system may hang, and rmthost must not.
Restoration PutBackInTime(const std::string& platform, const std::vector<Endpoint>& saved) {
  std::packaged_task<Restoration()> task([platform, saved] {
    try {
      const Platform connection(platform);
      return PutBack(saved);
    } catch (const Failure& failure) {
      return FailedRestoration(saved, failure.message);
    }
  });
  std::future<Restoration> done = task.get_future();
  std::thread worker(std::move(task));
  if (done.wait_for(kRestoreTime) == std::future_status::ready) {
    worker.join();
    return done.get();
  }
  worker.detach();
  return FailedRestoration(saved, fmt::format("the audio system doesn't answer within {} s", kRestoreTime.count()));
}

}  // namespace

void from_json(const Json& json, InterruptionKind& kind) {
  const std::string word = json.get<std::string>();
  kind = InterruptionKind::kGap;
  while (word != Word(kind) && kind != InterruptionKind::kDisturbance) {
    kind = InterruptionKind{static_cast<int>(kind) + 1};
  }
}

CallReport CallGuarded(const CallRequest& request, Seconds timeout, const Interruption& interruption) {
  const bool endsWithProcess = EndsWithProcess(request.platform);
  std::vector<Endpoint> saved;
  if (!endsWithProcess) saved = SettingsBefore(request);

  const ChildEnd end =
      RunSelf(kModuleProcess, TextOf(ModuleRequest{.call = request, .check = {}}), timeout, interruption);
  CallReport report = ReportOf(end, timeout);
  if (!report.called) throw Failure(*report.failure);
  if (!endsWithProcess) report.restored = PutBackInTime(request.platform, saved);
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
