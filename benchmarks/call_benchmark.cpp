// A whole record test, on the real clock and on the virtual one, where only its own work takes time.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <fstream>
#include <string>

#include "audiotests/record_sequence.h"
#include "platform/audio_platform.h"
#include "tests/support/machines.h"
#include "tests/support/temp_directory.h"

namespace {

void RecordCall(benchmark::State& state, const std::string& machine) {
  const TempDirectory directory;
  const std::string file = directory / "machine.json";
  std::ofstream(file) << machine;
  ZQ_RMT_TESTS_AUDIO::AudioRecordTestClass test;
  const std::string narrow = kRecordContract;
  const std::u16string contract(narrow.begin(), narrow.end());
  for (auto _ : state) {
    state.PauseTiming();
    if (AudioPlatformInitialize(("virtual:" + file).c_str()) != 0) state.SkipWithError(AudioPlatformError());
    state.ResumeTiming();
    std::free(test.RunAudioRecordTest(contract.c_str()));
  }
  AudioPlatformUninitialize();
}

void RecordCallOnVirtualClock(benchmark::State& state) { RecordCall(state, QuietMachine()); }
BENCHMARK(RecordCallOnVirtualClock)->Unit(benchmark::kMillisecond);

void RecordCallOnRealClock(benchmark::State& state) {
  std::string machine = QuietMachine();
  machine.replace(machine.find("virtual"), 7, "real");
  RecordCall(state, machine);
}
BENCHMARK(RecordCallOnRealClock)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);

}  // namespace
