// A message, and the system calls that it can't do without.

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <string>
#include <string_view>

#include "logging/log_directory.h"
#include "logging/logger.h"

namespace {

constexpr std::array<const char*, 11> kFlags = {"debug3", "debug2",       "debug1",  "test3", "test2",   "test1",
                                                "normal", "notification", "warning", "error", "critical"};

std::array<std::string, 11> FlagPaths() {
  std::array<std::string, 11> paths;
  for (std::size_t i = 0; i < paths.size(); ++i) {
    paths[i] = logging::GetLogDirectory().File(std::string(kFlags[i]) + ".flg");
  }
  return paths;
}

void Probe(const std::array<std::string, 11>& paths) {
  struct stat status;
  for (const std::string& path : paths) benchmark::DoNotOptimize(stat(path.c_str(), &status));
}

void FilteredMessage(benchmark::State& state) {
  logging::Logger logger("Benchmark", logging::GetLogDirectory().File("filtered.LOG"), 44000000);
  for (auto _ : state) {
    logger.LogDebug3(
        1, [] { return std::string("Entering ") + "CoreData" + "::Deserialize()"; }, 0.0);
  }
}
BENCHMARK(FilteredMessage);

void FilteredMessageSystemCalls(benchmark::State& state) {
  const auto paths = FlagPaths();
  for (auto _ : state) Probe(paths);
}
BENCHMARK(FilteredMessageSystemCalls);

void AcceptedMessage(benchmark::State& state) {
  logging::Logger logger("Benchmark", logging::GetLogDirectory().File("accepted.LOG"), 44000000);
  for (auto _ : state) logger.LogNormal(1, "Entering CoreData::Deserialize()", 0.0);
}
BENCHMARK(AcceptedMessage);

void AcceptedMessageSystemCalls(benchmark::State& state) {
  const auto paths = FlagPaths();
  const std::string path = logging::GetLogDirectory().File("raw.LOG");
  constexpr std::string_view kLine =
      "Wed Nov 18 14:30:14 2026, 244000001, normal: Entering CoreData::Deserialize(), [Benchmark]\n";
  for (auto _ : state) {
    Probe(paths);
    Probe(paths);
    struct stat status;
    benchmark::DoNotOptimize(stat(path.c_str(), &status));
    benchmark::DoNotOptimize(stat(path.c_str(), &status));
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
    benchmark::DoNotOptimize(write(file, kLine.data(), kLine.size()));
    close(file);
  }
}
BENCHMARK(AcceptedMessageSystemCalls);

}  // namespace
