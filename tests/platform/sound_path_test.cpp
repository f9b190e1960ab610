#include <cmath>
#include <complex>
#include <functional>
#include <numbers>

#include "tests/platform/virtual_machine_fixture.h"

namespace {

using SoundPath = VirtualMachine;

// What a stereo stream took in 520 ms, as the fraction of full scale. Times are in ms from its start, at 48 frames each.
struct Recorded {
  std::vector<std::int32_t> samples;

  double At(std::size_t frame, std::size_t channel = 0) const { return samples[2 * frame + channel] * 0x1p-31; }
  double Sum(double from, double to, const std::function<double(std::size_t frame)>& term) const {
    double sum = 0.0;
    for (auto i = static_cast<std::size_t>(from * 48); i < static_cast<std::size_t>(to * 48); ++i) sum += term(i);
    return sum;
  }
  double Frames(double from, double to, const std::function<bool(std::size_t frame)>& which) const {
    return Sum(from, to, which);
  }
  double Silent(double from, double to, std::size_t channel = 0) const {
    return Frames(from, to, [&](std::size_t i) { return At(i, channel) == 0.0; });
  }
  double Mean(double from, double to, std::size_t channel = 0) const {
    return Sum(from, to, [&](std::size_t i) { return At(i, channel); }) / (to - from) / 48;
  }
  double Rms(double from, double to) const {
    return std::sqrt(Sum(from, to, [&](std::size_t i) { return At(i) * At(i); }) / (to - from) / 48);
  }
  double Amplitude(double hz, double from, double to) const {
    const auto part = [&](double phase) {
      return Sum(from, to, [&](std::size_t i) {
        return At(i) * std::sin(2 * std::numbers::pi * (hz * static_cast<double>(i) / 48000 + phase));
      });
    };
    return std::hypot(part(0.0), part(0.25)) * 2 / (to - from) / 48;
  }
};

// 400 ms of 1000 Hz are heard from 20 ms on with an amplitude of 0.4; the second channel's level is a half.
TEST_F(SoundPath, MeetsItsConditions) {
  struct Case {
    const char* path;
    double (*measured)(const Recorded& recorded);
    double expected, bound;
  };
  const Case cases[] = {
      {"", [](const Recorded& r) { return r.Rms(30, 400); }, 0.4 / std::numbers::sqrt2, 1e-6},
      {R"({"kind": "gap", "atMs": 100, "lengthMs": 2.5})", [](const Recorded& r) { return r.Silent(21, 419); }, 120, 0},
      {R"({"kind": "gap", "atMs": 100, "lengthMs": 2.5}, {"kind": "noise", "ratioDb": 40})",
       [](const Recorded& r) { return r.Silent(120, 122.5); }, 120, 0},
      // A quarter of a period more than whole ones: nothing but the repeated frames is like what came that long before.
      {R"({"kind": "repeat", "atMs": 100, "lengthMs": 5.25})",
       [](const Recorded& r) { return r.Frames(30, 400, [&](auto i) { return r.At(i) == r.At(i - 252); }); }, 252, 0},
      {R"({"kind": "repeat", "atMs": 100, "lengthMs": 5.25})",
       [](const Recorded& r) { return r.Frames(120, 125.25, [&](auto i) { return r.At(i) == r.At(i - 252); }); }, 252,
       0},
      {R"({"kind": "cut", "atMs": 100})", [](const Recorded& r) { return r.Silent(21, 419); }, 299 * 48, 0},
      {R"({"kind": "clip", "level": 0.25})",
       [](const Recorded& r) {
         return r.Frames(30, 400, [&](auto i) { return std::abs(r.At(i)) == 0.25; }) / 370 / 48;
       },
       0.57, 0.03},
      {R"({"kind": "hum", "hz": 50, "level": 0.1})", [](const Recorded& r) { return r.Amplitude(50, 440, 520); }, 0.1,
       1e-6},
      {R"({"kind": "hum", "hz": 60, "level": 0.1})", [](const Recorded& r) { return r.Amplitude(120, 470, 520); }, 0.05,
       1e-6},
      {R"({"kind": "hum", "hz": 50, "level": 0.1})", [](const Recorded& r) { return r.Amplitude(150, 440, 520); },
       0.025, 1e-6},
      {R"({"kind": "tone", "hz": 3150, "level": 0.1})", [](const Recorded& r) { return r.Amplitude(3150, 440, 520); },
       0.1, 1e-6},
      // The test tone has 0.2447 of full scale, and half of that arrives.
      {R"({"kind": "noise", "ratioDb": 20})", [](const Recorded& r) { return r.Rms(425, 520); }, 0.012235, 0.0006},
      {R"({"kind": "speed", "ratio": 0.92})", [](const Recorded& r) { return r.Amplitude(920, 30, 430); }, 0.4, 0.002},
      {R"({"kind": "speed", "ratio": 0.92})",
       [](const Recorded& r) { return static_cast<double>(r.samples.size()) / 2; }, 56 * 480, 0},
      {R"({"kind": "offset", "level": -0.2})", [](const Recorded& r) { return r.Mean(440, 520, 1); }, -0.1, 1e-6},
      {R"({"kind": "dead", "channel": 1})", [](const Recorded& r) { return r.Silent(0, 520, 1); }, 520 * 48, 0},
      {R"({"kind": "dead", "channel": 1})", [](const Recorded& r) { return r.Rms(30, 400); }, 0.4 / std::numbers::sqrt2,
       1e-6},
      {R"({"kind": "inverted", "channel": 1})",
       [](const Recorded& r) { return r.Sum(30, 400, [&](auto i) { return std::abs(r.At(i) + 2 * r.At(i, 1)); }); }, 0,
       1e-4},
      {R"({"kind": "echo", "delayMs": 50, "gain": 0.5})", [](const Recorded& r) { return r.Amplitude(1000, 430, 460); },
       0.2, 1e-6},
      {R"({"kind": "echo", "delayMs": 50, "gain": 0.5})", [](const Recorded& r) { return r.Silent(420, 520); }, 50 * 48,
       0},
      {R"({"kind": "lowpass", "hz": 1000})", [](const Recorded& r) { return r.Rms(50, 400); }, 0.2, 1e-4},
      // Two octaves below the tone, 24 dB weaker.
      {R"({"kind": "lowpass", "hz": 250})", [](const Recorded& r) { return r.Rms(50, 400); },
       0.4 / std::numbers::sqrt2 / 16, 3e-4}};
  std::vector<std::int32_t> sound;
  for (int i = 0; i < 400 * 48; ++i) {
    sound.push_back(static_cast<std::int32_t>(0.8 * std::sin(2 * std::numbers::pi * i / 48 + 0.3) * 0x1p31));
  }
  for (const Case& one : cases) {
    ASSERT_TRUE(Become(With("", R"(, "levels": [1, 0.5], "hears": [{"endpoint": "speaker", "gain": 0.5, "delayMs": 20}],
      "path": [)" + std::string(one.path) +
                                    "]")))
        << one.path << AudioPlatformError();
    const auto heard = PlayAndRecord(Format(WAVE_FORMAT_PCM, 1, 48000, 32), As<BYTE>(sound),
                                     Format(WAVE_FORMAT_PCM, 2, 48000, 32), 520);
    ASSERT_GE(heard.size(), 520U * 48 * 8);
    EXPECT_NEAR(one.measured({As<std::int32_t>(heard)}), one.expected, one.bound) << one.path;
  }
}

}  // namespace
