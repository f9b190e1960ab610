#pragma once

#include <ctime>
#include <optional>
#include <string>
#include <vector>

#include "host/call/module_messages.h"
#include "host/endpoints/endpoints.h"
#include "host/judging/judge.h"

namespace host {

// One run of a test, with all that the host has learned of it.
struct RunRecord {
  Test test = Test::kPlay;
  std::string asked;  // the test and its endpoints as the command line has them, as "record mic"
  std::time_t began = 0;
  std::string platform;             // as --platform, but for "auto"
  std::string module;               // its file
  std::optional<Endpoint> capture;  // the endpoints as they were chosen; none for a contract given
  std::optional<Endpoint> render;   // nothing also for a record test that only listens
  Limits limits;
  CallReport call;
  std::optional<Outcome> outcome;  // nothing when there is no reply that tells one
  std::optional<Failure> failure;  // there when there is no outcome
  Verdict verdict{.passed = false, .word = "failed"};
  std::string log;                                       // the module's log file
  std::string logMoved;                                  // why it isn't in the shared directory; empty when it is
  std::string logMissing;                                // why nothing of the call came to it; empty when something did
  std::optional<std::vector<std::string>> logLines;      // what came to it meanwhile; with --verbose, and for files
  std::optional<std::string> plot, report, save, junit;  // the files that were written

  bool Passed() const { return verdict.passed; }
  bool WasInterrupted() const { return failure.has_value() && failure->exitCode == ExitCode::kInterrupted; }
  // Nothing when the module measured none.
  std::optional<double> Peak() const {
    const bool isMeasured = test == Test::kRecord && outcome.has_value() && host::Passed(test, *outcome);
    return isMeasured ? std::optional(outcome->maxAmplitude) : std::nullopt;
  }
  // The endpoint under test of a run that has one.
  const Endpoint& Tested() const { return capture.has_value() ? *capture : *render; }
};

}  // namespace host
