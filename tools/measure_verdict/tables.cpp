#include "tools/measure_verdict/tables.h"

#include <fmt/core.h>

#include <iterator>
#include <optional>

namespace measure_verdict {
namespace {

template <class... Values>
void Print(std::string& text, fmt::format_string<Values...> format, Values&&... values) {
  fmt::format_to(std::back_inserter(text), format, std::forward<Values>(values)...);
}

std::string Figure(const std::optional<double>& value) {
  return value.has_value() ? fmt::format("{:.4g}", *value) : "";
}

std::string Sized(const Condition& fault, std::size_t size) {
  return *fault.unit == 0 ? fmt::format("{}", fault.sizes[size]) : fmt::format("{} {}", fault.sizes[size], fault.unit);
}

// The first size from which on every one is found often enough.
std::string FoundFrom(const Condition& fault, const std::vector<Tally>& tallies) {
  std::size_t from = tallies.size();
  while (from > 0 && tallies[from - 1].FoundShare() >= Survey::kFound) --from;
  if (from == tallies.size()) return "not";
  return tallies.size() == 1 ? "found" : Sized(fault, from);
}

void PrintGood(const Survey& survey, std::string& text) {
  Print(text, "False alarms on {} good paths: {}.\n\n", survey.good.runs, survey.good.runs - survey.good.passed);
  text += "| Figure | At least | At most | Smallest on a good path | Largest |\n|---|---|---|---|---|\n";
  for (const auto& [name, extremes] : survey.measured) {
    Print(text, "| `{}` | {} | {} | {:.4g} | {:.4g} |\n", name, Figure(extremes.limits.atLeast),
          Figure(extremes.limits.atMost), extremes.least, extremes.most);
  }
}

void PrintImpostors(const Survey& survey, std::string& text) {
  Tally all;
  for (const Tally& tally : survey.impostors) {
    all.runs += tally.runs;
    all.passed += tally.passed;
  }
  Print(text, "\nPasses in {} runs without the tone: {}.\n\n", all.runs, all.passed);
  text += "| In the place of the tone | Runs | Taken for the tone | Passed |\n|---|---|---|---|\n";
  for (std::size_t i = 0; i < survey.impostors.size(); ++i) {
    const Tally& tally = survey.impostors[i];
    Print(text, "| {} | {} | {} | {} |\n", Impostors()[i].name, tally.runs, tally.toneHeard, tally.passed);
  }
}

void PrintFaults(const Survey& survey, std::string& text) {
  Print(text, "\nA fault counts as found from the size on from which it is found in at least {:.0f} % of the runs.\n\n",
        100.0 * Survey::kFound);
  text += "| Fault | Check | Found from | Size: share of runs in which it is found |\n|---|---|---|---|\n";
  for (std::size_t condition = 0; condition < survey.faults.size(); ++condition) {
    const Condition& fault = Faults()[condition];
    const std::vector<Tally>& tallies = survey.faults[condition];
    Print(text, "| {} | {} | {} | ", fault.name, fault.check == nullptr ? "any" : fault.check,
          FoundFrom(fault, tallies));
    int least = 0;
    for (std::size_t size = 0; size < tallies.size(); ++size) {
      if (size == 0 || tallies[size].runs < least) least = tallies[size].runs;
      Print(text, "{}{}: {:.1f} %", size == 0 ? "" : ", ", Sized(fault, size), 100.0 * tallies[size].FoundShare());
    }
    Print(text, " ({} runs or more each) |\n", least);
  }
}

}  // namespace

std::string TablesOf(const Survey& survey) {
  std::string text;
  Print(text, "{} runs with seed {}.\n\n", survey.request.runs, survey.request.seed);
  PrintGood(survey, text);
  PrintImpostors(survey, text);
  if (!survey.request.goalsOnly) PrintFaults(survey, text);
  return text;
}

}  // namespace measure_verdict
