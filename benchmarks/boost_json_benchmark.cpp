#include <benchmark/benchmark.h>

#include <boost/json.hpp>

#include "benchmarks/contract_text.h"

namespace {

void BoostJsonRoundTripUtf8(benchmark::State& state) {
  const std::string text = ContractText();
  for (auto _ : state) benchmark::DoNotOptimize(boost::json::serialize(boost::json::parse(text)));
}
BENCHMARK(BoostJsonRoundTripUtf8);

}  // namespace
