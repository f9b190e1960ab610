// Measures what the verdict of a record test can tell, on virtual machines with drawn paths (docs/verdict.md).

#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string>

#include "tools/measure_verdict/tables.h"

namespace {

constexpr const char* kBegin = "<!-- measured: begin -->\n";
constexpr const char* kEnd = "<!-- measured: end -->\n";
constexpr std::size_t kMostSurprises = 20;

void Rewrite(const std::string& file, const std::string& tables) {
  std::ifstream input(file);
  const std::string text{std::istreambuf_iterator<char>(input), {}};
  const std::size_t begin = text.find(kBegin);
  const std::size_t end = text.find(kEnd);
  if (begin == std::string::npos || end == std::string::npos) {
    throw std::runtime_error(file + " has no part between '<!-- measured: begin -->' and '<!-- measured: end -->'.");
  }
  std::ofstream output(file);
  output << text.substr(0, begin) << kBegin << '\n' << tables << '\n' << text.substr(end);
  if (!output.flush()) throw std::runtime_error(file + " can't be written.");
}

}  // namespace

int main(int argc, char** argv) {
  measure_verdict::SurveyRequest request{.runs = 10000};
  std::string document, trialsFile;
  CLI::App app("Measures what the verdict of a record test can tell. Exit code 1 when a goal is missed.");
  app.add_option("--runs", request.runs, "how many record tests to run")->check(CLI::Range(1, 10'000'000));
  app.add_option("--seed", request.seed, "other runs of the same kind");
  app.add_flag("--goals-only", request.goalsOnly, "leave out the faults that need not be found");
  app.add_option("--document", document, "rewrite the measured part of this file instead of printing it");
  app.add_option("--trials", trialsFile, "write what came of each record test to this file, a line of JSON each");
  CLI11_PARSE(app, argc, argv);
  try {
    std::ofstream trials;
    if (!trialsFile.empty()) trials.open(trialsFile);
    const measure_verdict::Survey survey = measure_verdict::RunSurvey(request, trials.is_open() ? &trials : nullptr);
    const std::string tables = measure_verdict::TablesOf(survey);
    if (document.empty()) {
      std::cout << tables;
    } else {
      Rewrite(document, tables);
    }
    for (std::size_t i = 0; i < survey.surprises.size() && i < kMostSurprises; ++i) {
      std::fprintf(stderr, "%s\n", survey.surprises[i].c_str());
    }
    return survey.MeetsGoals() ? 0 : 1;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 2;
  }
}
