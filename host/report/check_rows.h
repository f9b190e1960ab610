#pragma once

#include <string>
#include <vector>

#include "host/judging/verdict.h"

namespace host {

// One line of the table of checks, in words for a person.
struct CheckRow {
  std::string check;     // its name in the first line of a check; empty in the others
  std::string result;    // "ok", "FAIL" or "-" in the first line of a check; empty in the others
  std::string what;      // what was measured; why nothing was, when nothing was
  std::string measured;  // with its unit
  std::string limit;     // "at least 10 dB"; empty without one
};

// A row for each figure of each check.
std::vector<CheckRow> CheckRows(const Verdict& verdict);

}  // namespace host
