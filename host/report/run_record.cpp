#include "host/report/run_record.h"

namespace host {

std::optional<double> RunRecord::Peak() const {
  const bool isMeasured = test == Test::kRecord && outcome.has_value() && host::Passed(test, *outcome);
  return isMeasured ? std::optional(outcome->maxAmplitude) : std::nullopt;
}

}  // namespace host
