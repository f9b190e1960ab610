#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <tuple>

#include "host/analysis/findings.h"
#include "host/base/command_result.h"
#include "host/base/member.h"
#include "host/restoring/restoration.h"
#include "host/contract/contract.h"
#include "host/endpoints/refused_operation.h"
#include "host/listening/sound_summary.h"

// The module runs in a child process of rmthost, so that whatever it does there, rmthost goes on. One JSON text goes in
// and one comes out; both are rmthost's own affair.
namespace host {

// The command of rmthost that reads a request from standard input, carries it out and writes the report.
inline constexpr const char* kModuleProcess = "module-process";

// Calls the module with a contract. The answer is a CallReport.
struct CallRequest {
  std::string platform;  // as --platform, but for "auto"
  std::string module;    // the file
  Test test = Test::kPlay;
  std::string contract;
  std::optional<std::string> listenTo;     // the id of the capture endpoint to listen to meanwhile
  std::optional<std::string> saveTo = {};  // the file, which is there, that takes what is heard as WAV

  static constexpr auto Members() {
    using R = CallRequest;
    return std::tuple(Member("platform", &R::platform), Member("module", &R::module), Member("test", &R::test),
                      Member("contract", &R::contract), Member("listenTo", &R::listenTo), Member("saveTo", &R::saveTo));
  }
};

// Looks for what a contract loses in the module. The answer is a CommandResult.
struct CheckRequest {
  std::string module;
  std::string contract;
  bool all = false;

  static constexpr auto Members() {
    using R = CheckRequest;
    return std::tuple(Member("module", &R::module), Member("contract", &R::contract), Member("all", &R::all));
  }
};

// One of the two.
struct ModuleRequest {
  std::optional<CallRequest> call;
  std::optional<CheckRequest> check;

  static constexpr auto Members() {
    return std::tuple(Member("call", &ModuleRequest::call), Member("check", &ModuleRequest::check));
  }
};

// Any other word than the first three is a disturbance.
void from_json(const nlohmann::ordered_json& json, InterruptionKind& kind);

// What came of a call of the module.
struct CallReport {
  bool called = false;                        // whether the module was called; without that there is a failure
  std::optional<std::string> reply;           // nothing when the module gave none
  std::optional<RefusedOperation> refused;    // what failed last on the platform, when the test did not pass
  std::optional<double> seconds;              // how long the call took; nothing when it didn't come back
  std::optional<SoundSummary> heard;          // what the reference channel heard, for a drawing
  std::optional<RecordingFindings> findings;  // what was right and wrong with it
  std::optional<std::string> notHeard;        // why there is nothing, when it was asked for
  bool saved = false;                         // whether the WAV file was written
  std::optional<std::string> notSaved;        // why not, when something was heard and asked for
  Restoration restored;
  std::optional<Failure> failure;

  static constexpr auto Members() {
    using R = CallReport;
    return std::tuple(Member("called", &R::called), Member("reply", &R::reply), Member("refused", &R::refused),
                      Member("seconds", &R::seconds), Member("heard", &R::heard), Member("findings", &R::findings),
                      Member("notHeard", &R::notHeard), Member("saved", &R::saved), Member("notSaved", &R::notSaved),
                      Member("restored", &R::restored), Member("failure", &R::failure));
  }
};

}  // namespace host
