#pragma once

#include <chrono>
#include <cstdint>
#include <limits>
#include <thread>

namespace virtual_audio {

// Nanoseconds since the machine began.
using Time = std::int64_t;
constexpr Time kMillisecond = 1'000'000;
constexpr Time kSecond = 1'000'000'000;
// Later than anything that happens, and any delay can be added to it.
constexpr Time kNever = std::numeric_limits<Time>::max() / 2;

// The quotient rounded down, also below zero; `divisor` is positive.
constexpr std::int64_t FloorDivide(std::int64_t number, std::int64_t divisor) {
  const std::int64_t quotient = number / divisor;
  return number % divisor < 0 ? quotient - 1 : quotient;
}

// How many whole frames of `rate` fit into `elapsed`. Whole seconds apart, so that no product overflows in a year.
constexpr std::int64_t FramesIn(Time elapsed, std::int64_t rate) {
  const Time seconds = FloorDivide(elapsed, kSecond);
  return seconds * rate + (elapsed - seconds * kSecond) * rate / kSecond;
}

// How long `frames` of `rate` take, rounded down; `frames` isn't negative.
constexpr Time TimeOfFrames(std::int64_t frames, std::int64_t rate) {
  return frames / rate * kSecond + frames % rate * kSecond / rate;
}

// The machine's time: the computer's, or one that moves in Sleep alone.
class Clock {
 public:
  explicit Clock(bool isVirtual) : isVirtual_(isVirtual) {}

  Time Now() const {
    if (isVirtual_) return now_;
    return std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::steady_clock::now() - began_).count();
  }

  void Sleep(std::uint32_t milliseconds) {
    if (isVirtual_) {
      now_ += milliseconds * kMillisecond;
    } else {
      std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
    }
  }

 private:
  bool isVirtual_;
  Time now_ = 0;
  std::chrono::steady_clock::time_point began_ = std::chrono::steady_clock::now();
};

}  // namespace virtual_audio
