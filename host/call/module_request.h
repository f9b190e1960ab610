#pragma once

#include <optional>
#include <string>
#include <variant>

#include "host/base/answer.h"
#include "host/call/restoration.h"
#include "host/contract/contract.h"

// The module runs in a child process of rmthost, so that whatever it does there, rmthost goes on. One JSON text goes in
// and one comes out; both are rmthost's own affair.
namespace host {

// The command of rmthost that reads a request from standard input, carries it out and writes the report.
inline constexpr const char* kModuleProcess = "module-process";

// Calls the module with a contract.
struct CallRequest {
  std::string platform;  // as --platform, but for "auto"
  std::string module;    // the file
  Test test = Test::kPlay;
  std::string contract;
  std::string listenTo;  // the id of the capture endpoint to listen to meanwhile; empty for none
};

// Looks for what a contract loses in the module.
struct CheckRequest {
  std::string module;
  std::string contract;
  bool all = false;
};

using ModuleRequest = std::variant<CallRequest, CheckRequest>;

struct CallReport {
  bool called = false;                     // whether the module was called; without that there is a failure
  std::optional<std::string> reply;        // nothing when the module gave none
  std::optional<double> seconds;           // how long the call took; nothing when it didn't come back
  std::string heard;                       // HeardJson; empty when there is nothing
  std::string notHeard;                    // why there is nothing, when it was asked for
  std::optional<Restoration> restoration;  // where the endpoints end with the process
  std::optional<Failure> failure;
};

std::string RequestJson(const ModuleRequest& request);
std::string CallReportJson(const CallReport& report);
std::string AnswerJson(const Answer& answer);

// These throw Failure for a text that isn't one of the above.
ModuleRequest ReadRequest(const std::string& text);
CallReport ReadCallReport(const std::string& text);
Answer ReadAnswer(const std::string& text);

}  // namespace host
