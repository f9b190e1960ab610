// The engine's arithmetic, each next to a plain loop over the same amount of data. Compare the two times of one run.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <vector>

#include "audio/capture_sink.h"
#include "audio/tone_source.h"

namespace {

constexpr std::uint32_t kSinkBytes = 2000000;
constexpr int kToneSamples = 44100;
constexpr int kPartials = 7;

void ToneSynthesize(benchmark::State& state) {
  for (auto _ : state) {
    audio::ToneSourceClass tone(1200);
    tone.SetFormat(audio::FixedTestFormat);
    tone.Synthesize();
    benchmark::DoNotOptimize(tone);
  }
  state.SetItemsProcessed(state.iterations() * kToneSamples);
}
BENCHMARK(ToneSynthesize)->Unit(benchmark::kMillisecond);

// The sines of the tone alone, at the same angles.
void ToneBareSine(benchmark::State& state) {
  constexpr double kOmega = 0.00014247573562897742;
  for (auto _ : state) {
    double sum = 0.0;
    for (int i = 0; i < kToneSamples; ++i) {
      for (int partial = 0; partial < kPartials; ++partial) sum += std::sin(i * (1185.0 + 5.0 * partial) * kOmega);
    }
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * kToneSamples);
}
BENCHMARK(ToneBareSine)->Unit(benchmark::kMillisecond);

std::vector<std::uint8_t> SinkBytes() {
  std::vector<std::uint8_t> bytes(kSinkBytes);
  // A fixed, irregular pattern, so that the processor can't predict the branches of the decoding.
  std::uint32_t state = 1;
  for (std::uint8_t& byte : bytes) {
    state = state * 1664525 + 1013904223;
    byte = static_cast<std::uint8_t>(state >> 24);
  }
  return bytes;
}

void FillSink(audio::CaptureSinkClass& sink, std::int64_t bits) {
  audio::CaptureFormatBlock format;
  format.header.nBlockAlign = 1;  // frames of one byte fill the sink to the last byte
  format.header.wBitsPerSample = static_cast<std::uint16_t>(bits);
  format.tail[0] = static_cast<std::uint8_t>(bits);
  sink.SetFormat(format);
  sink.AppendFrames(SinkBytes().data(), kSinkBytes);
}

void SinkDecode(benchmark::State& state) {
  audio::CaptureSinkClass sink;
  FillSink(sink, state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(sink.DecodeSamples());
  state.SetBytesProcessed(state.iterations() * kSinkBytes);
}
BENCHMARK(SinkDecode)->ArgName("bits")->Arg(16)->Arg(24)->Arg(32)->Unit(benchmark::kMicrosecond);

// Everything that the record test does with a full sink.
void SinkMaximum(benchmark::State& state) {
  audio::CaptureSinkClass sink;
  FillSink(sink, state.range(0));
  for (auto _ : state) {
    benchmark::DoNotOptimize(audio::LargestMagnitude(sink.NormalizedSamples()));
  }
  state.SetBytesProcessed(state.iterations() * kSinkBytes);
}
BENCHMARK(SinkMaximum)->ArgName("bits")->Arg(16)->Arg(24)->Arg(32)->Unit(benchmark::kMicrosecond);

// The memory alone: a copy of the sink's bytes, and two new lists with a value for each sample.
void SinkBareMemory(benchmark::State& state) {
  const std::vector<std::uint8_t> bytes = SinkBytes();
  const auto samples = bytes.size() * 8 / static_cast<std::size_t>(state.range(0));
  for (auto _ : state) {
    std::vector<std::uint8_t> copy(bytes);
    std::vector<std::int32_t> decoded(samples);
    std::vector<double> normalised(samples);
    benchmark::DoNotOptimize(copy.data());
    benchmark::DoNotOptimize(decoded.data());
    benchmark::DoNotOptimize(normalised.data());
  }
  state.SetBytesProcessed(state.iterations() * kSinkBytes);
}
BENCHMARK(SinkBareMemory)->ArgName("bits")->Arg(16)->Arg(24)->Arg(32)->Unit(benchmark::kMicrosecond);

}  // namespace
