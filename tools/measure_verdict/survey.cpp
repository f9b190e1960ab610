#include "tools/measure_verdict/survey.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string_view>
#include <thread>

#include "tools/measure_verdict/trial.h"

namespace measure_verdict {
namespace {

enum class Kind { kGood, kImpostor, kFault };

struct Trial {
  Kind kind;
  std::size_t condition = 0;
  std::size_t size = 0;
};

// A size that must be found is tried this many times as often as another.
constexpr int kGoalTrials = 4;

std::vector<Trial> FaultTrials(bool goalsOnly) {
  std::vector<Trial> trials;
  for (std::size_t condition = 0; condition < Faults().size(); ++condition) {
    const Condition& fault = Faults()[condition];
    for (std::size_t size = 0; size < fault.sizes.size(); ++size) {
      const bool isGoal = fault.goal != 0.0 && fault.sizes[size] == fault.goal;
      if (goalsOnly && !isGoal) continue;
      trials.insert(trials.end(), isGoal ? kGoalTrials : 1, {Kind::kFault, condition, size});
    }
  }
  return trials;
}

// A fifth of the runs is on good paths, a fifth without the tone, and the faults share the rest.
std::vector<Trial> PlanTrials(const SurveyRequest& request) {
  std::vector<Trial> plan;
  const std::vector<Trial> faults = FaultTrials(request.goalsOnly);
  for (int i = 0; i < request.runs; ++i) {
    const auto round = static_cast<std::size_t>(i / 5);
    if (i % 5 == 0) {
      plan.push_back({Kind::kGood});
    } else if (i % 5 == 1) {
      plan.push_back({Kind::kImpostor, round % Impostors().size()});
    } else {
      plan.push_back(faults[(3 * round + static_cast<std::size_t>(i % 5 - 2)) % faults.size()]);
    }
  }
  return plan;
}

const char* NameOf(const Trial& trial) {
  if (trial.kind == Kind::kGood) return "a good path";
  return (trial.kind == Kind::kFault ? Faults() : Impostors())[trial.condition].name;
}

TestPath DrawPath(const Trial& trial, Random& random) {
  TestPath path = DrawGoodPath(random);
  if (trial.kind == Kind::kImpostor) {
    path.hearsSpeaker = false;
    path.echoes.clear();
    Impostors()[trial.condition].add(0.0, random, path);
  } else if (trial.kind == Kind::kFault) {
    const Condition& fault = Faults()[trial.condition];
    fault.add(fault.sizes[trial.size], random, path);
  }
  return path;
}

// What a process tells of a trial, as a line of JSON.
host::Json ReportOf(const Trial& trial, const TestPath& path, const host::Verdict& verdict) {
  host::Json report = {{"trial", NameOf(trial)}};
  if (trial.kind == Kind::kFault) report["size"] = Faults()[trial.condition].sizes[trial.size];
  report["passed"] = verdict.passed;
  report["said"] = verdict.word + ": " + verdict.sentence;
  report["failed"] = host::Json::array();
  for (const host::Check& check : verdict.checks) {
    if (check.result == host::CheckResult::kFail) report["failed"].push_back(check.name);
    if (check.name == "tone") report["toneHeard"] = check.result == host::CheckResult::kPass;
    for (const host::Measurement& measurement : check.measurements) {
      report["measured"].push_back(measurement);
    }
  }
  report["machine"] = path.Description();
  return report;
}

void RunShare(const std::vector<Trial>& plan, std::uint64_t seed, std::size_t first, std::size_t step,
              const std::filesystem::path& directory) {
  std::filesystem::create_directory(directory);
  // The module reads this when it is loaded.
  setenv("ZQRMT_LOG_DIRECTORY", directory.c_str(), 1);
  std::ofstream reports(directory / "reports");
  for (std::size_t i = first; i < plan.size(); i += step) {
    Random random(seed, i);
    const TestPath path = DrawPath(plan[i], random);
    reports << host::TextOf(ReportOf(plan[i], path, RunTrial(path.Description(), directory))) << '\n';
  }
  if (!reports.flush()) throw std::runtime_error("The reports can't be written.");
}

// Ends the process.
[[noreturn]] void RunShareAndExit(const std::vector<Trial>& plan, std::uint64_t seed, std::size_t first,
                                  std::size_t step, const std::filesystem::path& directory) {
  int status = 0;
  try {
    RunShare(plan, seed, first, step, directory);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    status = 1;
  }
  _exit(status);
}

void NoteExtremes(const host::Json& measured, Survey& survey) {
  for (const host::Json& one : measured) {
    const auto figure = one.get<host::Measurement>();
    Extremes& extremes =
        survey.measured.try_emplace(figure.name, Extremes{figure, figure.value, figure.value}).first->second;
    extremes.least = std::min(extremes.least, figure.value);
    extremes.most = std::max(extremes.most, figure.value);
  }
}

void Count(const Trial& trial, const host::Json& report, Survey& survey) {
  const bool passed = report["passed"];
  const bool toneHeard = report["toneHeard"];
  const auto& failed = report["failed"];
  const bool isFault = trial.kind == Kind::kFault;
  const char* const check = isFault ? Faults()[trial.condition].check : nullptr;
  const auto fails = [&](const char* name) { return std::count(failed.begin(), failed.end(), name) > 0; };
  // The others aren't judged without the tone; and a gap over its begin or end leaves less of it.
  const bool found = !passed && (check == nullptr || fails(check) || fails("tone") ||
                                 (std::string_view(check) == "interruptions" && fails("duration")));
  Tally& tally = isFault                         ? survey.faults[trial.condition][trial.size]
                 : trial.kind == Kind::kImpostor ? survey.impostors[trial.condition]
                                                 : survey.good;
  ++tally.runs;
  tally.passed += passed ? 1 : 0;
  tally.found += found ? 1 : 0;
  tally.toneHeard += toneHeard ? 1 : 0;
  if (trial.kind == Kind::kGood) NoteExtremes(report["measured"], survey);
  const bool isSurprise = trial.kind == Kind::kGood ? !passed
                          : isFault                 ? !found && IsGoal(Faults()[trial.condition], trial.size)
                                                    : passed || toneHeard;
  if (!isSurprise) return;
  survey.surprises.push_back(host::TextOf(report));
}

}  // namespace

bool IsGoal(const Condition& fault, std::size_t size) {
  if (fault.goal == 0.0) return false;
  const auto goal = std::find(fault.sizes.begin(), fault.sizes.end(), fault.goal);
  return size >= static_cast<std::size_t>(goal - fault.sizes.begin());
}

bool Survey::MeetsGoals() const {
  bool meets = good.passed == good.runs;
  for (const Tally& tally : impostors) meets = meets && tally.passed == 0;
  for (std::size_t condition = 0; condition < faults.size(); ++condition) {
    for (std::size_t size = 0; size < faults[condition].size(); ++size) {
      const Tally& tally = faults[condition][size];
      if (IsGoal(Faults()[condition], size) && tally.runs > 0) meets = meets && tally.FoundShare() >= kFound;
    }
  }
  return meets;
}

Survey RunSurvey(const SurveyRequest& request, std::ostream* trials) {
  Survey survey;
  survey.request = request;
  survey.impostors.resize(Impostors().size());
  for (const Condition& fault : Faults()) survey.faults.emplace_back(fault.sizes.size());
  const std::vector<Trial> plan = PlanTrials(request);

  std::string name = (std::filesystem::temp_directory_path() / "measure-verdict-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("There is no directory for temporary files.");
  const std::filesystem::path directory = name;
  // The module carries out one call at a time, so each share has a process of its own.
  const std::size_t shares = std::max(1U, std::thread::hardware_concurrency());
  std::vector<pid_t> processes;
  for (std::size_t share = 0; share < shares; ++share) {
    const pid_t process = fork();
    if (process == 0) RunShareAndExit(plan, request.seed, share, shares, directory / std::to_string(share));
    processes.push_back(process);
  }
  bool failed = false;
  for (const pid_t process : processes) {
    int status = 0;
    failed = process < 0 || waitpid(process, &status, 0) != process || status != 0 || failed;
  }
  std::vector<std::ifstream> reports;
  for (std::size_t share = 0; share < shares; ++share) {
    reports.emplace_back(directory / std::to_string(share) / "reports");
  }
  std::string line;
  for (std::size_t i = 0; i < plan.size() && !failed; ++i) {
    failed = !std::getline(reports[i % shares], line);
    if (failed) break;
    Count(plan[i], host::ParseJson(line), survey);
    if (trials != nullptr) *trials << line << '\n';
  }
  std::filesystem::remove_all(directory);
  if (failed) throw std::runtime_error("Not all trials could be run.");
  return survey;
}

}  // namespace measure_verdict
