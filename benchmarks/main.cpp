#include <benchmark/benchmark.h>
#include <malloc.h>

#include <cstdlib>

#include "tests/support/temp_directory.h"

int main(int argc, char** argv) {
  // Left to itself the C library decides by what was freed before how often freed pages go back to the system, so that a
  // benchmark's time depended on those before it. Large contracts still get theirs from the system.
  mallopt(M_MMAP_THRESHOLD, 16 << 20);
  mallopt(M_TRIM_THRESHOLD, 16 << 20);
  const TempDirectory log;
  setenv("ZQRMT_LOG_DIRECTORY", log.Path().c_str(), 1);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
