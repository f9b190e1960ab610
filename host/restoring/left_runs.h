#pragma once

#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "host/base/member.h"
#include "host/restoring/endpoint_locks.h"
#include "host/restoring/restoration.h"

namespace host {

// A run of rmthost whose record is there.
struct LeftRun {
  std::string file;                     // the record
  std::optional<std::int64_t> process;  // nothing when the record can't be read
  std::optional<std::string> platform;  // as --platform
  std::optional<std::string> began;
  bool isRunning = false;               // its process lives, and puts back itself
  std::optional<Restoration> restored;  // what became of its settings; nothing when they were left alone
  std::optional<std::string> trouble;   // why they were

  static constexpr auto Members() {
    using L = LeftRun;
    return std::tuple(Member("file", &L::file), Member("process", &L::process), Member("platform", &L::platform),
                      Member("began", &L::began), Member("isRunning", &L::isRunning), Member("restored", &L::restored),
                      Member("trouble", &L::trouble));
  }
  // Whether there is nothing more to do about it.
  bool IsDone() const { return restored.has_value() && restored->Summary() != Restoration::State::kNo; }
};

enum class LeftRuns { kShow, kPutBack };

// Every run whose record is there, in order of their records. With kPutBack the settings of those that are gone are put
// back, and the records of those that are back are taken away; endpoints that another process holds are left to it, but
// not those in `held`. With a `platform`, runs on others are passed over. Throws Failure when records can't be looked for.
std::vector<LeftRun> LookAtLeftRuns(LeftRuns what, const std::optional<std::string>& platform = std::nullopt,
                                    const EndpointLocks& held = {});

// The same for the run with this one record; nothing when the record is gone.
std::optional<LeftRun> LookAtLeftRun(LeftRuns what, const std::filesystem::path& record,
                                     const EndpointLocks& held = {});

// Lines for a person, as "A test of process 4711 that began ... was cut off. restored: yes; ...".
std::string LeftRunText(const LeftRun& run);

}  // namespace host
