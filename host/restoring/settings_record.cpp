#include "host/restoring/settings_record.h"

#include <fmt/chrono.h>
#include <fmt/core.h>

#include <algorithm>
#include <ctime>
#include <random>

#include "host/base/failure.h"
#include "host/base/json.h"
#include "host/base/system.h"
#include "host/restoring/private_folder.h"
#include "text/utf.h"

namespace host {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kBegin = "settings-", kEnd = ".json", kUnfinished = ".new";

bool IsName(const std::string& name, std::string_view end) { return name.starts_with(kBegin) && name.ends_with(end); }

bool IsWhole(const SavedSettings& settings) {
  constexpr int kFormat = 1;
  return settings.formatVersion == kFormat && !settings.platform.empty() &&
         std::ranges::all_of(settings.endpoints, [](const SavedEndpoint& endpoint) {
           const bool areLevels =
               !endpoint.levels.has_value() ||
               std::ranges::all_of(*endpoint.levels, [](float level) { return level >= 0.0F && level <= 1.0F; });
           const bool isFlow = endpoint.flow == Word(Flow::kRender) || endpoint.flow == Word(Flow::kCapture);
           return !endpoint.id.empty() && isFlow && areLevels;
         });
}

}  // namespace

SavedSettings SettingsOf(const std::string& platform, const std::vector<Endpoint>& endpoints) {
  SavedSettings settings{.machine = MachineName(),
                         .platform = platform,
                         .process = ProcessId(),
                         .began = fmt::format("{:%Y-%m-%d %H:%M:%S}", fmt::localtime(std::time(nullptr))),
                         .endpoints = {}};
  for (const Endpoint& endpoint : endpoints) {
    settings.endpoints.push_back({.id = endpoint.id,
                                  .name = endpoint.name,
                                  .flow = Word(endpoint.flow),
                                  .levels = endpoint.levels,
                                  .muted = endpoint.muted});
  }
  return settings;
}

std::vector<Endpoint> EndpointsIn(const SavedSettings& settings) {
  std::vector<Endpoint> endpoints;
  for (const SavedEndpoint& saved : settings.endpoints) {
    Endpoint& endpoint = endpoints.emplace_back();
    endpoint.id = saved.id;
    endpoint.name = saved.name;
    endpoint.flow = saved.flow == Word(Flow::kRender) ? Flow::kRender : Flow::kCapture;
    endpoint.levels = saved.levels;
    endpoint.muted = saved.muted;
  }
  return endpoints;
}

SettingsRecord SettingsRecord::Keep(const SavedSettings& settings) {
  std::random_device random;
  const std::string name = fmt::format("{}{}-{:08x}", kBegin, settings.process, random());
  const fs::path folder = StateFolder();
  // Under another name until it is whole. Nobody else knows that name, so there is nobody who could hold it.
  std::optional<LockedFile> file = LockedFile::Hold(folder / (name + std::string(kUnfinished)), true);
  if (!file.has_value()) {
    throw Failure(ExitCode::kBroken, fmt::format("No file can be made in '{}'.", text::Utf8FromPath(folder)),
                  "Try again.");
  }
  file->Write(TextOf(Json(settings)) + "\n");
  file->Rename(folder / (name + std::string(kEnd)));
  return SettingsRecord(*std::move(file));
}

std::vector<fs::path> SettingsRecords() {
  std::vector<fs::path> records;
  std::error_code error;
  for (const fs::directory_entry& entry : fs::directory_iterator(StateFolder(), error)) {
    const std::string name = text::Utf8FromPath(entry.path().filename());
    if (IsName(name, kEnd)) records.push_back(entry.path());
    // A run that died over this one had not yet changed anything.
    if (!IsName(name, kUnfinished)) continue;
    if (std::optional<LockedFile> unfinished = LockedFile::Hold(entry.path(), false)) unfinished->Remove();
  }
  std::ranges::sort(records);
  return records;
}

std::optional<SavedSettings> ReadRecord(const std::string& text) {
  std::optional<SavedSettings> settings = ReadJson<SavedSettings>(text);
  return settings.has_value() && IsWhole(*settings) ? std::move(settings) : std::nullopt;
}

}  // namespace host
