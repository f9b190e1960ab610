// What the host finds out about a recording, beside one look at each of its samples.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <numeric>

#include "host/analysis/analyse.h"
#include "host/analysis/tone.h"

namespace {

constexpr double kRate = 48000.0;
constexpr double kSeconds = 1.5;

// Stereo, the tone from 0.2 s on in a little noise.
host::Recording ToneRecording() {
  host::Recording recording{.rate = kRate, .channels = std::vector<std::vector<float>>(2), .discontinuities = {}};
  std::uint32_t state = 1;
  for (double time = 0.0; time < kSeconds; time += 1.0 / kRate) {
    const double seconds = time - 0.2;
    double sample = 0.0;
    for (std::size_t k = 0; k < host::kPartials && seconds >= 0.0 && seconds < host::kToneSeconds; ++k) {
      const auto phasor = host::Phasor((host::kToneHz + host::PartialOffsetHz(k)) * seconds);
      sample += (k % 2 == 1 ? 0.07 : -0.07) * phasor.imag();
    }
    for (std::vector<float>& channel : recording.channels) {
      state = state * 1664525 + 1013904223;
      channel.push_back(static_cast<float>(sample + 0.001 * (state / 4294967296.0 - 0.5)));
    }
  }
  return recording;
}

void AnalyseStereo(benchmark::State& state) {
  const host::Recording recording = ToneRecording();
  for (auto _ : state) benchmark::DoNotOptimize(host::AnalyseRecording(recording));
}
BENCHMARK(AnalyseStereo)->Unit(benchmark::kMillisecond);

void AnalyseStereoBareSum(benchmark::State& state) {
  const host::Recording recording = ToneRecording();
  for (auto _ : state) {
    for (const std::vector<float>& channel : recording.channels) {
      benchmark::DoNotOptimize(std::inner_product(channel.begin(), channel.end(), channel.begin(), 0.0));
    }
  }
}
BENCHMARK(AnalyseStereoBareSum)->Unit(benchmark::kMillisecond);

}  // namespace
