#include "platform/virtual/sound_path.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace virtual_audio {

namespace {

using Kind = PathCondition::Kind;

// The root mean square of the test tone at full level: seven sines of one amplitude, which is a seventh of 30000 steps of
// 16 bits, and sines of different frequencies add up by their squares.
const double kToneRms = 30000.0 / 32768.0 / 7.0 * std::sqrt(7.0 / 2.0);

Time TimeOf(double milliseconds) { return std::llround(milliseconds * kMillisecond); }

double Sine(double hz, double seconds) { return std::sin(2.0 * std::numbers::pi * hz * seconds); }

bool IsWithin(const PathCondition& condition, Time since) {
  return since >= TimeOf(condition.atMs) && since < TimeOf(condition.atMs + condition.lengthMs);
}

}  // namespace

SoundPath::SoundPath(const EndpointDescription& endpoint, DWORD rate, std::uint64_t seed)
    : path_(endpoint.path), clockRate_(rate), toneRms_(kToneRms), random_(seed) {
  if (path_.empty()) return;
  if (!endpoint.hears.empty()) {
    double loudest = 0.0;
    for (const Hearing& hearing : endpoint.hears) loudest = std::max(loudest, std::abs(hearing.gain));
    toneRms_ *= loudest;
  }
  double longestRepeat = 0.0;
  for (const PathCondition& condition : path_) {
    if (condition.kind == Kind::kSpeed) clockRate_ = static_cast<DWORD>(std::lround(rate / condition.ratio));
    if (condition.kind == Kind::kRepeat) longestRepeat = std::max(longestRepeat, condition.lengthMs);
  }
  past_.assign(static_cast<std::size_t>(FramesIn(TimeOf(longestRepeat), clockRate_)) + 1, 0.0);
  for (const PathCondition& condition : path_) {
    if (condition.kind == Kind::kLowpass) AddFilter(condition.hz);
  }
}

// Butterworth's by the bilinear transform, as in R. Bristow-Johnson's "Audio EQ Cookbook" with a Q of 1 / sqrt(2).
void SoundPath::AddFilter(double hz) {
  // No frame holds a frequency that this one would weaken.
  if (2.0 * hz >= clockRate_) return;
  const double omega = 2.0 * std::numbers::pi * hz / clockRate_;
  const double alpha = std::sin(omega) / std::numbers::sqrt2;
  const double a0 = 1.0 + alpha;
  const double b1 = (1.0 - std::cos(omega)) / a0;
  filters_.push_back(
      {.b0 = b1 / 2.0, .b1 = b1, .b2 = b1 / 2.0, .a1 = -2.0 * std::cos(omega) / a0, .a2 = (1.0 - alpha) / a0});
}

double SoundPath::Filter::operator()(double sample) {
  const double filtered = b0 * sample + z1;
  z1 = b1 * sample - a1 * filtered + z2;
  z2 = b2 * sample - a2 * filtered;
  return filtered;
}

void SoundPath::Hear(std::span<double> mix, const FrameGrid& grid, Time heardSince, const Listen& listen) {
  listen(mix, grid, 0, 1.0);
  if (path_.empty()) return;
  for (const PathCondition& condition : path_) {
    if (condition.kind == Kind::kEcho) listen(mix, grid, TimeOf(condition.delayMs), condition.gain);
  }
  std::int64_t frame = grid.frame;
  for (double& sample : mix) {
    const Time now = grid.start + TimeOfFrames(frame, grid.rate);
    for (Filter& filter : filters_) sample = filter(sample);
    for (const PathCondition& condition : path_) sample = Meet(condition, sample, frame, now, now - heardSince);
    past_[static_cast<std::size_t>(frame) % past_.size()] = sample;
    ++frame;
  }
}

double SoundPath::Meet(const PathCondition& condition, double sample, std::int64_t frame, Time now, Time since) {
  // Hum and tones sound all the time, so they don't wait for something to be heard.
  const double seconds = static_cast<double>(now) / kSecond;
  switch (condition.kind) {
    case Kind::kCut: return since >= TimeOf(condition.atMs) ? 0.0 : sample;
    case Kind::kHum:
      return sample + condition.level * (Sine(condition.hz, seconds) + 0.5 * Sine(2.0 * condition.hz, seconds) +
                                         0.25 * Sine(3.0 * condition.hz, seconds));
    case Kind::kTone: return sample + condition.level * Sine(condition.hz, seconds);
    case Kind::kNoise: return sample + toneRms_ * std::pow(10.0, -condition.ratioDb / 20.0) * Gaussian();
    case Kind::kOffset: return sample + condition.level;
    case Kind::kClip: return std::clamp(sample, -condition.level, condition.level);
    case Kind::kRepeat: {
      if (!IsWithin(condition, since)) return sample;
      const auto size = static_cast<std::int64_t>(past_.size());
      return past_[static_cast<std::size_t>((frame + size - FramesIn(TimeOf(condition.lengthMs), clockRate_)) % size)];
    }
    case Kind::kGap: return IsWithin(condition, since) ? 0.0 : sample;
    case Kind::kSpeed:
    case Kind::kEcho:
    case Kind::kLowpass:
    case Kind::kDead:
    case Kind::kInverted: break;  // not of single samples
  }
  return sample;
}

// The sum of twelve uniform numbers has a variance of 1. The library's distribution would differ from library to library.
double SoundPath::Gaussian() {
  double sum = -6.0;
  for (int i = 0; i < 12; ++i) sum += static_cast<double>(random_() >> 11) * 0x1p-53;
  return sum;
}

Time SoundPath::LongestEcho(std::span<const PathCondition> path) {
  Time longest = 0;
  for (const PathCondition& condition : path) longest = std::max(longest, TimeOf(condition.delayMs));
  return longest;
}

}  // namespace virtual_audio
