#pragma once

#include <cstddef>
#include <string>

#include "host/report/run_record.h"

namespace host {

// The results of runs as JUnit's XML (docs/junit.md), for what collects the results of tests.
class JunitDocument {
 public:
  // How many cases there are, and how many of them are not passed.
  struct Counts {
    std::size_t tests = 0, failures = 0, errors = 0, skipped = 0;
  };

  // Adds a run as a suite: a case for the run itself, one for each check, and one for the settings of the endpoints. A run
  // that never called the module has the first alone. The log lines go into it when the run has them.
  void Add(const RunRecord& run);

  // What was added so far, as a document.
  std::string Text() const;

 private:
  Counts counts_;
  double seconds_ = 0.0;  // of the module's calls
  std::string suites_;
};

}  // namespace host
