#include "host/analysis/analyse.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "host/analysis/channels.h"
#include "host/analysis/clipping.h"
#include "host/analysis/interruptions.h"
#include "host/analysis/level.h"
#include "host/analysis/remainder.h"
#include "host/analysis/speed.h"
#include "host/analysis/tone_search.h"
#include "host/analysis/tone_synthesis.h"

namespace host {
namespace {

constexpr double kLongestSeconds = 4.0;
constexpr double kStretchHopSeconds = 2.0;
constexpr double kEchoSeconds = 0.05;
constexpr std::size_t kLeastFrames = 16;

double MeanSquare(std::span<const double> samples) {
  const double sum = std::inner_product(samples.begin(), samples.end(), samples.begin(), 0.0);
  return samples.empty() ? 0.0 : sum / static_cast<double>(samples.size());
}

// The samples without their offset.
std::vector<double> FindLevels(const std::vector<float>& raw, LevelFindings& level) {
  std::vector<double> samples(raw.begin(), raw.end());
  for (double& sample : samples) {
    if (std::isfinite(sample)) continue;
    sample = 0.0;
    ++level.invalidSamples;
  }
  double sum = 0.0;
  for (const double sample : samples) {
    sum += sample;
    level.peak = std::max(level.peak, std::abs(sample));
  }
  level.dcOffset = samples.empty() ? 0.0 : sum / static_cast<double>(samples.size());
  for (double& sample : samples) sample -= level.dcOffset;
  level.rms = std::sqrt(MeanSquare(samples));
  return samples;
}

// Where the stretch begins in which the tone is heard best.
std::size_t FindStretch(std::span<const double> samples, std::size_t length, double rate) {
  std::size_t best = 0;
  double amplitude = -1.0;
  const auto hop = static_cast<std::size_t>(kStretchHopSeconds * rate);
  for (std::size_t begin = 0; begin + length <= samples.size(); begin += std::max<std::size_t>(1, hop)) {
    const auto spectrum = TransformStretch(samples.subspan(begin, length), rate, StretchWindow::kRectangular);
    const double found = FindComb(spectrum).amplitude;
    if (found > amplitude) {
      amplitude = found;
      best = begin;
    }
  }
  return best;
}

// The times of the tone, of which the timeline has those of its own.
void FindTimes(const ToneSearch& search, double seconds, ToneFindings& tone) {
  const double from = search.baseband.Seconds(search.timeline.first);
  const double to = search.baseband.Seconds(search.timeline.last);
  const double end = seconds * search.speed;
  // The begin is known but for whole periods of the envelope, and a strong echo moves it by its delay. Recordings begin
  // before the tone does. The begin is taken that leaves least of what was heard outside, and whose first loud part is
  // next to where the tone was heard first.
  double leastMismatch = 1e300;
  double chosen = 0.0;
  for (double begin = search.tone.BeginSeconds() - kEnvelopeSeconds; begin < end; begin += kEnvelopeSeconds) {
    if (begin < -kEchoSeconds) continue;
    const double outside = std::max(0.0, begin - from - kEchoSeconds) + std::max(0.0, to - begin - kToneSeconds);
    const double mismatch = 2.0 * outside + std::abs(from - std::max(0.0, begin) - 0.04);
    if (mismatch < leastMismatch) {
      leastMismatch = mismatch;
      chosen = begin;
    }
  }
  const double due = std::min(chosen + kToneSeconds, end);
  tone.recordingEndedFirst = end < chosen + kToneSeconds;
  tone.beginSeconds = chosen / search.speed;
  tone.heardFromSeconds = from / search.speed;
  tone.heardToSeconds = to / search.speed;
  tone.lostAtBeginSeconds = std::max(0.0, from - std::max(0.0, chosen)) / search.speed;
  tone.lostAtEndSeconds = std::max(0.0, due - to) / search.speed;
}

double LevelRangeDb(const ToneSearch& search) {
  const auto margin = static_cast<std::size_t>(0.1 / search.baseband.SecondsPerValue());
  std::size_t first = search.timeline.first + margin;
  std::size_t last = search.timeline.last - std::min(search.timeline.last, margin);
  if (first >= last) return 0.0;
  const auto [least, most] = std::minmax_element(search.gains.begin() + static_cast<std::ptrdiff_t>(first),
                                                 search.gains.begin() + static_cast<std::ptrdiff_t>(last));
  return 20.0 * std::log10(*most / *least);
}

std::vector<double> PartialAmplitudes(const ToneSearch& search) {
  const std::size_t first = search.timeline.first;
  const std::size_t last = search.timeline.last;
  const auto begin = search.gains.begin();
  const double gain =
      std::accumulate(begin + static_cast<std::ptrdiff_t>(first), begin + static_cast<std::ptrdiff_t>(last), 0.0) /
      static_cast<double>(std::max<std::size_t>(1, last - first));
  std::vector<double> amplitudes;
  for (std::size_t k = 0; k < kPartials; ++k) {
    amplitudes.push_back(gain * std::abs(search.tone.partials[k]) /
                         BasebandResponse(search.baseband, PartialOffsetHz(k)));
  }
  return amplitudes;
}

void DescribeTone(std::span<const double> samples, double rate, const ToneSearch& search, ChannelFindings& channel) {
  const SynthesizedTone synthesized = SynthesizeTone(search, samples.size());
  const std::size_t first = search.timeline.first * search.baseband.hop;
  const std::size_t last = std::min(samples.size(), search.timeline.last * search.baseband.hop);
  std::vector<double> remainder;
  double toneEnergy = 0.0;
  double remainderEnergy = 1e-300;
  for (std::size_t n = first; n < last; ++n) {
    const bool kept = synthesized.undisturbed[n];
    remainder.push_back(kept ? samples[n] - synthesized.samples[n] : 0.0);
    remainderEnergy += remainder.back() * remainder.back();
    if (kept) toneEnergy += synthesized.samples[n] * synthesized.samples[n];
  }
  const double undisturbed = static_cast<double>(std::max<std::size_t>(1, synthesized.undisturbedSamples));
  StretchSpectrum spectrum = TransformStretch(remainder, rate, StretchWindow::kHann);
  for (double& power : spectrum.power) power *= static_cast<double>(remainder.size()) / undisturbed;

  channel.level.rms = std::sqrt(MeanSquare(samples.subspan(first, last - first)));
  channel.tone.rms = std::sqrt(toneEnergy / undisturbed);
  channel.tone.signalToNoiseDb = PowerDb(toneEnergy / remainderEnergy);
  channel.tone.levelRangeDb = LevelRangeDb(search);
  channel.tone.partials = PartialAmplitudes(search);
  channel.clipping = FindClipping(samples, search, synthesized, spectrum);
  channel.clipping.thdNDb = PowerDb(remainderEnergy / (toneEnergy + remainderEnergy));
  channel.remainder = DescribeRemainder(spectrum, search.speed);
}

}  // namespace

RecordingFindings AnalyseRecording(const Recording& recording) {
  RecordingFindings findings;
  const bool validRate = std::isfinite(recording.rate) && recording.rate > 0.0;
  findings.rateHz = validRate ? recording.rate : 0.0;
  std::vector<ToneSearch> searches;
  for (const std::vector<float>& raw : recording.channels) {
    ChannelFindings& channel = findings.channels.emplace_back();
    const std::vector<double> all = FindLevels(raw, channel.level);
    ToneSearch& search = searches.emplace_back();
    const double seconds = validRate ? static_cast<double>(raw.size()) / recording.rate : 0.0;
    findings.seconds = std::max(findings.seconds, seconds);
    if (seconds < RecordingFindings::kLeastSeconds || raw.size() < kLeastFrames) continue;
    findings.tooLittle = false;

    std::span<const double> samples = all;
    std::size_t begin = 0;
    if (seconds > kLongestSeconds && kLongestSeconds * recording.rate >= static_cast<double>(kLeastFrames)) {
      const auto length = static_cast<std::size_t>(kLongestSeconds * recording.rate);
      begin = FindStretch(samples, length, recording.rate);
      samples = samples.subspan(begin, length);
    }
    search = FindTone(samples, recording.rate);
    channel.tone.heard = search.heard;
    if (!search.heard) {
      const auto spectrum = TransformStretch(samples, recording.rate, StretchWindow::kHann);
      channel.remainder = DescribeRemainder(spectrum, 0.0);
      continue;
    }
    channel.tone.speed = search.speed;
    channel.tone.explainedShare = search.explainedShare;
    channel.tone.patternMatch = search.tone.PatternMatch();
    FindTimes(search, static_cast<double>(samples.size()) / recording.rate, channel.tone);
    DescribeTone(samples, recording.rate, search, channel);
    const double beginSeconds = static_cast<double>(begin) / recording.rate;
    std::vector<double> hostLosses;
    for (const std::size_t frame : recording.discontinuities) {
      hostLosses.push_back(static_cast<double>(frame) / recording.rate - beginSeconds);
    }
    channel.interruptions = FindInterruptions(search, hostLosses);
    for (ToneInterruption& interruption : channel.interruptions) interruption.beginSeconds += beginSeconds;
    for (ClippedStretch& stretch : channel.clipping.clippedStretches) stretch.beginSeconds += beginSeconds;
    for (double* time : {&channel.tone.beginSeconds, &channel.tone.heardFromSeconds, &channel.tone.heardToSeconds}) {
      *time += beginSeconds;
    }
  }
  findings.referenceChannel = ReferenceChannel(findings.channels);
  for (std::size_t c = 0; c < searches.size(); ++c) {
    CompareChannels(searches[findings.referenceChannel], searches[c], findings.channels[c]);
  }
  return findings;
}

}  // namespace host
