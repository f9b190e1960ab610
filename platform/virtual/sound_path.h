#pragma once

#include <cstdint>
#include <functional>
#include <random>
#include <span>
#include <vector>

#include "platform/core_audio.h"
#include "platform/virtual/clock.h"
#include "platform/virtual/description.h"
#include "platform/virtual/machine_playback.h"

namespace virtual_audio {

// What the conditions of an endpoint's path make of the sound on its way to one capture stream, except for dead and
// inverted channels, which are the endpoint's gains. Without conditions it changes nothing.
class SoundPath {
 public:
  // Adds what sounded `delay` before each of the grid's frames to `mix`, a sample per frame, `gain` times as loud.
  using Listen = std::function<void(std::span<double> mix, const FrameGrid& grid, Time delay, double gain)>;

  // `rate` is the stream's nominal rate. The endpoint's path must outlive this object.
  SoundPath(const EndpointDescription& endpoint, DWORD rate, std::uint64_t seed);

  // The frames that the device really takes in a second, rounded to a whole number.
  DWORD ClockRate() const { return clockRate_; }

  // Adds what arrives at the grid's frames to `mix`, which holds silence; the grid's rate is ClockRate(). Filters and
  // noise go on from call to call, so a frame is heard once and in order. `heardSince` is when the endpoint begins to hear
  // something, kNever as long as that isn't known.
  void Hear(std::span<double> mix, const FrameGrid& grid, Time heardSince, const Listen& listen);

  // The longest delay of an echo, 0 without one.
  static Time LongestEcho(std::span<const PathCondition> path);

 private:
  // A low-pass of second order in direct form II transposed.
  struct Filter {
    double b0, b1, b2, a1, a2;
    double z1 = 0.0, z2 = 0.0;
    double operator()(double sample);
  };

  void AddFilter(double hz);
  double Meet(const PathCondition& condition, double sample, std::int64_t frame, Time now, Time since);
  double Gaussian();

  std::span<const PathCondition> path_;
  DWORD clockRate_;
  double toneRms_;
  std::mt19937_64 random_;
  std::vector<Filter> filters_;
  std::vector<double> past_;  // what arrived last, for repeats: frame n is at n modulo the size
};

}  // namespace virtual_audio
