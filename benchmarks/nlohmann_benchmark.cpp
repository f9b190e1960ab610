#include <benchmark/benchmark.h>

#include <nlohmann/json.hpp>

#include "benchmarks/contract_text.h"

namespace {

void NlohmannRoundTripUtf8(benchmark::State& state) {
  const std::string text = ContractText();
  for (auto _ : state) benchmark::DoNotOptimize(nlohmann::ordered_json::parse(text).dump());
}
BENCHMARK(NlohmannRoundTripUtf8);

}  // namespace
