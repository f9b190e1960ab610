#pragma once

#include <optional>
#include <string>

#include "host/base/interruption.h"
#include "host/commands/commands.h"
#include "host/commands/test_report.h"
#include "host/endpoints/endpoints.h"
#include "host/report/json_output.h"
#include "host/report/judgement.h"

namespace host {

// One test of chosen endpoints, with all that there is to say about it.
struct TestRun {
  Test test = Test::kPlay;
  std::optional<Endpoint> capture;  // record
  std::optional<Endpoint> render;   // nothing for a record test that only listens
  Limits limits;
  TestCall call;
  Judgement judgement = Judgement::kFailed;

  bool Passed() const { return judgement == Judgement::kPass; }
  // Nothing when the module measured none.
  std::optional<double> Peak() const;
  // The name and the id of the endpoint under test.
  const Endpoint& Tested() const { return capture.has_value() ? *capture : *render; }
};

// Chooses the endpoints, runs the test once, and judges it. Throws Failure when the module wasn't called.
TestRun RunTest(const Options& options, const std::string& platform, bool listen, const Interruption& interruption,
                const ProgressSpan& span);

// For a person: the verdict, the endpoints, the figures; without what became of the endpoints. The run must have an
// outcome.
std::string RunText(const TestRun& run, const Style& style);

// The members of the JSON result, but for `reply`, `heard` and `plot`.
JsonMembers RunMembers(const TestRun& run, const Options& options);

}  // namespace host
