#pragma once

#include <cstdint>
#include <map>
#include <ostream>
#include <string>
#include <vector>

#include "host/judging/verdict.h"
#include "tools/measure_verdict/conditions.h"

namespace measure_verdict {

struct Tally {
  int runs = 0;
  int passed = 0;     // the verdict is a pass
  int found = 0;      // the check that should fail does, or one that stands for it
  int toneHeard = 0;  // the tone's check passes

  double FoundShare() const { return runs == 0 ? 0.0 : static_cast<double>(found) / runs; }
};

// The extremes of a figure over all good paths.
struct Extremes {
  host::Measurement limits;
  double least = 0.0, most = 0.0;
};

struct SurveyRequest {
  int runs = 0;
  std::uint64_t seed = 1;
  bool goalsOnly = false;  // of the faults, only sizes that must be found
};

struct Survey {
  SurveyRequest request;
  Tally good;
  std::map<std::string, Extremes> measured;
  std::vector<Tally> impostors;            // as in Impostors()
  std::vector<std::vector<Tally>> faults;  // as in Faults(), by size
  std::vector<std::string> surprises;      // reports of trials that went against a goal

  // The share of runs in which a fault has to be found to count as found.
  static constexpr double kFound = 0.99;

  // Whether no good path failed, nothing passed without the tone, and each goal is met.
  bool MeetsGoals() const;
};

// Whether the fault must be found at its size with this index.
bool IsGoal(const Condition& fault, std::size_t size);

// Runs the trials in one process for each processor. The result follows from the request alone. Writes what came of each
// trial to `trials`, if there is one, a line of JSON each. Throws std::runtime_error when a trial couldn't be run.
Survey RunSurvey(const SurveyRequest& request, std::ostream* trials);

}  // namespace measure_verdict
