// Reading and writing a contract, and RapidJSON's parsing and writing of the same text.

#include <benchmark/benchmark.h>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <utf8.h>

#include <string>

#include "benchmarks/contract_text.h"
#include "logging/model_logger.h"
#include "models/core/rmt_data_contract.h"

namespace {

const std::u16string& Contract() {
  static const std::u16string kContract = utf8::utf8to16(ContractText());
  return kContract;
}

void RoundTrip(benchmark::State& state, std::int32_t level) {
  logging::GetModelLogger().SetLevel(level);
  for (auto _ : state) {
    ZQ_RMT_MODELS::RMTDataContract contract;
    contract.Deserialize(Contract());
    benchmark::DoNotOptimize(contract.Serialize());
  }
  logging::GetModelLogger().SetLevel(-1);
}

// While the level is set, the logger doesn't look for flag files.
void ContractRoundTrip(benchmark::State& state) { RoundTrip(state, logging::kNormal); }
BENCHMARK(ContractRoundTrip);

void ContractRoundTripWithFlagProbes(benchmark::State& state) { RoundTrip(state, -1); }
BENCHMARK(ContractRoundTripWithFlagProbes);

void RapidJsonRoundTrip(benchmark::State& state) {
  using Encoding = rapidjson::UTF16<char16_t>;
  for (auto _ : state) {
    rapidjson::GenericDocument<Encoding> document;
    rapidjson::GenericStringStream<Encoding> stream(Contract().c_str());
    document.ParseStream(stream);
    rapidjson::GenericStringBuffer<Encoding> buffer;
    rapidjson::Writer<rapidjson::GenericStringBuffer<Encoding>, Encoding, Encoding> writer(buffer);
    document.Accept(writer);
    benchmark::DoNotOptimize(buffer.GetString());
  }
}
BENCHMARK(RapidJsonRoundTrip);

}  // namespace
