// Contracts of a megabyte and of ten. The time per byte should be the same, and memory a small multiple of the text.

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <cstdio>
#include <fstream>
#include <string>

#include "logging/model_logger.h"
#include "models/core/rmt_data_contract.h"

namespace {

// `head`, then `count` times `element` with its number in place of each #, then `tail`.
std::string Repeat(const std::string& head, const std::string& element, const std::string& tail, std::int64_t count) {
  std::string text = head;
  for (std::int64_t i = 0; i < count; ++i) {
    if (i > 0) text += ',';
    for (const char character : element) {
      if (character == '#') {
        text += std::to_string(i);
      } else {
        text += character;
      }
    }
  }
  return text + tail;
}

std::string DevListText(std::int64_t entries) {
  return Repeat(R"({"CoreData":{"DeviceInfo":{"DevList":{"TotalCount":1,"CurrentIndex":0,"Segment":[)",
                R"({"Name":"Device #","DeviceID":"PCI\\VEN_8086","DeviceInstanceID":"PCI\\#","DUID":"d","Type":"t"})",
                "]}}}}", entries);
}

std::string PropertiesText(std::int64_t properties) {
  return Repeat(R"({"CoreData":{"DeviceInfo":{"DevProperties":{"Properties":[)",
                R"({"Name":"Property #","Type":"String","IsArray":false,"ValueArray":["v"]})", "]}}}}", properties);
}

// A kilobyte each.
std::string LongPropertiesText(std::int64_t properties) {
  const std::string value(900, 'v');
  return Repeat(R"({"CoreData":{"DeviceInfo":{"DevProperties":{"Properties":[)",
                R"({"Name":"Property #","Type":"String","IsArray":false,"ValueArray":[")" + value + R"("]})", "]}}}}",
                properties);
}

std::string UnknownKeysText(std::int64_t keys) {
  return Repeat(R"({"CoreData":{"DeviceInfo":{)", R"("k#":1)", "}}}", keys);
}

// The process's highest resident memory since ResetPeak, in bytes.
std::int64_t Peak() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    long long kilobytes = 0;
    if (std::sscanf(line.c_str(), "VmHWM: %lld kB", &kilobytes) == 1) return kilobytes * 1024;
  }
  return 0;
}

void ResetPeak() {
  malloc_trim(0);
  std::ofstream("/proc/self/clear_refs") << 5;
}

void RoundTrip(benchmark::State& state, std::string (*text)(std::int64_t)) {
  const std::string narrow = text(state.range(0));
  const std::u16string contract(narrow.begin(), narrow.end());
  const auto bytes = static_cast<std::int64_t>(contract.size() * sizeof(char16_t));
  logging::GetModelLogger().SetLevel(logging::kNormal);
  ResetPeak();
  const std::int64_t before = Peak();
  for (auto _ : state) {
    ZQ_RMT_MODELS::RMTDataContract root;
    root.Deserialize(contract);
    benchmark::DoNotOptimize(root.Serialize());
  }
  logging::GetModelLogger().SetLevel(-1);
  state.SetBytesProcessed(state.iterations() * bytes);
  state.counters["text_MB"] = static_cast<double>(bytes) / 1e6;
  // The host's text and the memory needed for the call, in multiples of the text in UTF-16.
  state.counters["memory_per_text"] = 1.0 + static_cast<double>(Peak() - before) / static_cast<double>(bytes);
}

void DevListEntries(benchmark::State& state) { RoundTrip(state, DevListText); }
BENCHMARK(DevListEntries)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void Properties(benchmark::State& state) { RoundTrip(state, PropertiesText); }
BENCHMARK(Properties)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

void LongProperties(benchmark::State& state) { RoundTrip(state, LongPropertiesText); }
BENCHMARK(LongProperties)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

void UnknownKeys(benchmark::State& state) { RoundTrip(state, UnknownKeysText); }
BENCHMARK(UnknownKeys)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

}  // namespace
