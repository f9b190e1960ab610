#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "host/base/member.h"
#include "host/base/text_output.h"
#include "host/report/run_record.h"

namespace host {

// What the runs that have a figure came to.
struct Spread {
  double minimum, median, maximum;

  static constexpr auto Members() {
    return std::tuple(Member("minimum", &Spread::minimum), Member("median", &Spread::median),
                      Member("maximum", &Spread::maximum));
  }
};

// Several runs of one test, summed up.
struct Series {
  Test test = Test::kPlay;
  int asked = 0;
  int passes = 0;
  std::map<std::string, std::size_t> failures;  // by what they came to
  std::optional<Spread> peak, seconds;
  std::optional<std::string> junit;  // the file that was written

  bool Passed() const { return passes == asked; }
  static constexpr auto Members() {
    return std::tuple(Member("test", &Series::test), Member("asked", &Series::asked), Member("passes", &Series::passes),
                      Member("failures", &Series::failures), Member("peak", &Series::peak),
                      Member("seconds", &Series::seconds), Member("junit", &Series::junit));
  }
};

// A run that was interrupted counts as none.
Series SumUp(const std::vector<RunRecord>& runs, Test test, int asked);

// For a person.
std::string SeriesText(const Series& series, const std::vector<RunRecord>& runs, const Style& style);

// The text of the JSON object `result` (docs/rmthost-json.md).
std::string SeriesJson(const std::string& platform, const Series& series, const std::vector<RunRecord>& runs);

}  // namespace host
