#pragma once

#include <vector>

#include "tools/measure_verdict/test_path.h"

namespace measure_verdict {

// Something that a path can have, at graded sizes.
struct Condition {
  const char* name;
  const char* unit;           // of the sizes; empty where there is but one
  std::vector<double> sizes;  // from what is hardest to find on
  void (*add)(double size, Random& random, TestPath& path);
  const char* check = nullptr;  // which must fail; null when any may
  double goal = 0.0;            // the size from which on it must be found; 0 when it need not
};

// What is added to good paths.
const std::vector<Condition>& Faults();

// What is heard in the place of the tone, and must never pass.
const std::vector<Condition>& Impostors();

}  // namespace measure_verdict
