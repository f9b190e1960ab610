#include "host/restoring/left_runs.h"

#include <fmt/core.h>

#include <algorithm>

#include "host/base/system.h"
#include "host/restoring/put_back_in_time.h"
#include "host/restoring/settings_record.h"
#include "text/utf.h"

namespace host {
namespace {

LeftRun RunOf(const std::filesystem::path& record, const std::optional<SavedSettings>& settings) {
  LeftRun run;
  run.file = text::Utf8FromPath(record);
  if (!settings.has_value()) {
    run.trouble = "the record is half written, or isn't one of rmthost's; it isn't obeyed";
    return run;
  }
  run.process = settings->process;
  run.platform = settings->platform;
  run.began = settings->began;
  return run;
}

// Those of the endpoints that aren't held yet.
std::vector<Endpoint> NotHeld(const std::vector<Endpoint>& endpoints, const EndpointLocks& held) {
  std::vector<Endpoint> others;
  std::ranges::copy_if(endpoints, std::back_inserter(others),
                       [&](const Endpoint& endpoint) { return !held.Holds(endpoint.id); });
  return others;
}

}  // namespace

std::optional<LeftRun> LookAtLeftRun(LeftRuns what, const std::filesystem::path& record, const EndpointLocks& held) {
  std::optional<LockedFile> file;
  try {
    file = LockedFile::Hold(record, false);
  } catch (const Failure& failure) {
    LeftRun run = RunOf(record, std::nullopt);
    run.trouble = failure.message;
    return run;
  }
  if (!file.has_value()) {
    const std::string text = ReadHeldFile(record);
    if (text.empty()) return std::nullopt;
    LeftRun run = RunOf(record, ReadRecord(text));
    run.isRunning = true;
    return run;
  }
  const std::optional<SavedSettings> settings = ReadRecord(file->Read());
  LeftRun run = RunOf(record, settings);
  if (what == LeftRuns::kShow || !settings.has_value()) return run;
  if (settings->machine != MachineName()) {
    run.trouble = fmt::format("it ran on another computer, '{}'", settings->machine);
    return run;
  }
  const std::vector<Endpoint> endpoints = EndpointsIn(*settings);
  std::string busy;
  const std::optional<EndpointLocks> locks = EndpointLocks::Try(NotHeld(endpoints, held), &busy);
  if (!locks.has_value()) {
    run.trouble = busy;
    return run;
  }
  run.restored = PutBackInTime(settings->platform, endpoints);
  if (run.IsDone()) file->Remove();
  return run;
}

std::vector<LeftRun> LookAtLeftRuns(LeftRuns what, const std::optional<std::string>& platform,
                                    const EndpointLocks& held) {
  std::vector<LeftRun> runs;
  for (const std::filesystem::path& record : SettingsRecords()) {
    if (platform.has_value()) {
      const std::optional<SavedSettings> settings = ReadRecord(ReadHeldFile(record));
      if (settings.has_value() && settings->platform != *platform) continue;
    }
    std::optional<LeftRun> run = LookAtLeftRun(what, record, held);
    if (run.has_value()) runs.push_back(*std::move(run));
  }
  return runs;
}

std::string LeftRunText(const LeftRun& run) {
  std::string text = run.process.has_value() ? fmt::format("The test of process {}, begun {} on '{}', ", *run.process,
                                                           *run.began, *run.platform)
                                             : fmt::format("'{}': ", run.file);
  if (run.isRunning) return text::Printable(text + "is running.");
  if (run.process.has_value()) text += run.trouble.has_value() ? "was cut off; " : "was cut off. ";
  if (run.trouble.has_value()) return text::Printable(text + *run.trouble + ".");
  if (!run.restored.has_value()) return text::Printable(text + "'rmthost restore' puts its settings back.");
  return text::Printable(text) + RestorationText(*run.restored) + ".";
}

}  // namespace host
