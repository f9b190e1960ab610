#pragma once

#include <optional>
#include <string>

#include "host/base/command_result.h"
#include "host/base/text_output.h"
#include "host/call/guarded_call.h"
#include "host/contract/contract.h"
#include "host/judging/limits.h"

namespace host {

// What the command line asks for.
struct Options {
  enum class Command { kList, kPlay, kRecord, kRepeat, kRun, kCheck, kLimits, kRestore, kVersion, kCompletion };

  Command command = Command::kList;
  Test test = Test::kPlay;                // play, record, repeat, run
  std::optional<std::string> endpoint;    // play, record, repeat: the endpoint under test
  std::optional<std::string> render;      // record: the endpoint that the tone is played on
  Limits limits;                          // record: of the peak, as given
  std::optional<std::string> limitsFile;  // record, limits: a file with limits
  bool requireListening = false;          // record: fail when the host can't listen beside the module
  std::optional<std::string> report;      // play, record: the file for the page
  std::optional<std::string> junit;       // play, record, repeat: the file for the results
  std::optional<std::string> plot;        // record: the file to draw into
  std::optional<std::string> save;        // record: the file for what was heard
  bool noPlot = false;                    // record: no drawing on the terminal
  bool plotData = false;                  // record: what a drawing is made from goes into the JSON document
  int runs = 10;                          // repeat
  bool failFast = false;                  // repeat
  std::string contract;                   // run, check: a file, or "-" for standard input
  bool all = false;                       // check: every finding in the text, not the first few of each kind
  bool onlyList = false;                  // restore: put nothing back
  std::string shell;                      // completion
  std::string platform = "auto";
  std::optional<std::string> module;
  double timeout = kDefaultTimeout;  // seconds
  double wait = kDefaultWait;        // seconds
  Colour colour = Colour::kAuto;
  bool json = false;
  bool quiet = false;
  bool verbose = false;
};

// Each carries its command out, the text in `style`. Throws Failure.
CommandResult ListEndpoints(const Options& options);
CommandResult PlayOrRecord(const Options& options, const Style& style);
CommandResult RepeatRuns(const Options& options, const Style& style);
CommandResult RunContract(const Options& options);
CommandResult CheckContract(const Options& options);
CommandResult ShowLimits(const Options& options);
CommandResult RestoreSettings(const Options& options);
CommandResult ShowVersion(const Options& options);

// What a command that lists or tests endpoints does first: puts back what runs on the same platform left that are gone, and
// says so in `notes` and `json` of the result. Never throws.
CommandResult PutBackLeftSettings(const Options& options) noexcept;

// The limits that the options and their file give, where the file may be standard input. Throws Failure for a file that
// can't be used, and for limits that nothing can meet.
Limits LimitsGiven(const Options& options);

// The part of CheckContract that calls the module, in this process. The request's contract must have an object
// CoreData. All failures are in the result.
CommandResult CheckHere(const CheckRequest& request);

// The child's side of module_messages.h: carries out the request on standard input and reports. Throws when it can't.
void ServeModuleRequest();

}  // namespace host
