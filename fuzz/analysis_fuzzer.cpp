// Any bytes as a recording: its figures must be finite, and shares and times within their bounds. The first byte is the
// number of channels, the next two are the rate, and the rest are samples, either floats bit by bit or bytes that stand
// for the generated tone with that much added.

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "host/analysis/analyse.h"
#include "host/analysis/tone.h"

namespace {

double ToneAt(double seconds) {
  double sum = 0.0;
  for (std::size_t k = 0; k < host::kPartials; ++k) {
    const auto phasor = host::Phasor((host::kToneHz + host::PartialOffsetHz(k)) * seconds);
    sum += (k % 2 == 1 ? 1.0 : -1.0) * phasor.imag() / static_cast<double>(host::kPartials);
  }
  return sum;
}

host::Recording RecordingOf(const std::uint8_t* data, std::size_t size) {
  host::Recording recording;
  const bool tone = (data[0] & 1) != 0;
  recording.rate = 16.0 * (data[1] | data[2] << 8);
  recording.channels.resize(1 + data[0] / 2 % 4);
  recording.discontinuities = {data[1], std::size_t{1000} * data[2]};
  const std::size_t width = tone ? 1 : sizeof(float);
  for (std::size_t i = 3, n = 0; i + width <= size; i += width, ++n) {
    float sample = 0.0F;
    if (tone) {
      sample = static_cast<float>(0.5 * ToneAt(static_cast<double>(n) / 8000.0) + data[i] / 256.0);
    } else {
      std::memcpy(&sample, data + i, sizeof sample);
    }
    recording.channels[n % recording.channels.size()].push_back(sample);
  }
  return recording;
}

void Require(bool condition) {
  if (!condition) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 3) return 0;
  const host::RecordingFindings findings = host::AnalyseRecording(RecordingOf(data, size));
  for (const host::ChannelFindings& channel : findings.channels) {
    for (const double figure :
         {channel.level.peak, channel.level.rms, channel.level.dcOffset, channel.tone.signalToNoiseDb,
          channel.tone.levelRangeDb, channel.clipping.peakCompressionDb, channel.clipping.thdNDb,
          channel.clipping.harmonicsDb, channel.clipping.intermodulationDb, channel.remainder.totalDb,
          channel.remainder.humDb, channel.remainder.otherToneDb, channel.remainder.noiseDb, channel.relativeLevelDb}) {
      Require(std::isfinite(figure));
    }
    for (const double share : {channel.tone.explainedShare, channel.tone.patternMatch, channel.clipping.flatShare}) {
      Require(share >= 0.0 && share <= 1.000001);
    }
    for (const double amplitude : channel.tone.partials) Require(std::isfinite(amplitude) && amplitude >= 0.0);
    Require(channel.clipping.clippedStretches.size() <= 100);
    for (const host::ClippedStretch& one : channel.clipping.clippedStretches) {
      Require(one.lengthSeconds > 0.0 && one.beginSeconds + one.lengthSeconds <= findings.seconds + 0.01);
    }
    Require(channel.tone.heardToSeconds <= findings.seconds + 0.01);
    for (const host::ToneInterruption& one : channel.interruptions) {
      Require(one.lengthSeconds >= 0.0 && one.beginSeconds + one.lengthSeconds <= findings.seconds + 0.01);
    }
  }
  return 0;
}
