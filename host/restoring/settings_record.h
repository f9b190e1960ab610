#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "host/base/member.h"
#include "host/endpoints/endpoints.h"
#include "host/restoring/locked_file.h"

namespace host {

// How an endpoint was before a test.
struct SavedEndpoint {
  std::string id, name, flow;
  std::optional<std::vector<float>> levels;
  std::optional<bool> muted;

  static constexpr auto Members() {
    using E = SavedEndpoint;
    return std::tuple(Member("id", &E::id), Member("name", &E::name), Member("flow", &E::flow),
                      Member("levels", &E::levels), Member("muted", &E::muted));
  }
};

// What a run of rmthost has to put back.
struct SavedSettings {
  int formatVersion = 1;
  std::string machine;   // the computer's name: a home can be shared by several
  std::string platform;  // as --platform, with the sound server's address where that is known
  std::int64_t process = 0;
  std::string began;
  std::vector<SavedEndpoint> endpoints;

  static constexpr auto Members() {
    using S = SavedSettings;
    return std::tuple(Member("formatVersion", &S::formatVersion), Member("machine", &S::machine),
                      Member("platform", &S::platform), Member("process", &S::process), Member("began", &S::began),
                      Member("endpoints", &S::endpoints));
  }
};

// Those of this process, on this computer, from now on.
SavedSettings SettingsOf(const std::string& platform, const std::vector<Endpoint>& endpoints);

// The endpoints as they were.
std::vector<Endpoint> EndpointsIn(const SavedSettings& settings);

// A file that says what to put back, as long as that isn't done. It outlives the process, which holds it while it lives: a
// record that nobody holds is of a run that is gone.
class SettingsRecord {
 public:
  // Writes a record; returns once it would outlive a power cut. Throws Failure.
  static SettingsRecord Keep(const SavedSettings& settings);

  const std::filesystem::path& File() const { return file_.Path(); }
  // All is put back.
  void Remove() { file_.Remove(); }

 private:
  explicit SettingsRecord(LockedFile file) : file_(std::move(file)) {}

  LockedFile file_;
};

// The files of all records of this user, in order of their names. Takes away what runs left that had not yet begun.
std::vector<std::filesystem::path> SettingsRecords();

// What a record says. Nothing for a text that is half written or isn't a record.
std::optional<SavedSettings> ReadRecord(const std::string& text);

}  // namespace host
