#include <benchmark/benchmark.h>

#include <cstdlib>

#include "tests/support/temp_directory.h"

int main(int argc, char** argv) {
  const TempDirectory log;
  setenv("ZQRMT_LOG_DIRECTORY", log.Path().c_str(), 1);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
