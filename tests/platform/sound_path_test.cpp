#include <cmath>
#include <functional>
#include <numbers>

#include "tests/platform/audio_helpers.h"

namespace {

using SoundPath = VirtualMachine;

// What a stereo stream took, full scale being 1.0. Times are in ms from its start, at 48 frames each.
struct Recorded {
  std::vector<std::int32_t> samples;

  double At(std::size_t frame, std::size_t channel = 0) const { return samples[2 * frame + channel] * 0x1p-31; }
  double Sum(double from, double to, const std::function<double(std::size_t frame)>& term) const {
    double sum = 0.0;
    for (auto i = static_cast<std::size_t>(from * 48); i < static_cast<std::size_t>(to * 48); ++i) sum += term(i);
    return sum;
  }
  double Silent(double from, double to, std::size_t channel = 0) const {
    return Sum(from, to, [&](auto i) { return At(i, channel) == 0.0; });
  }
  // Frames that are as those 5.25 ms earlier.
  double Repeated(double from, double to) const {
    return Sum(from, to, [&](auto i) { return At(i) == At(i - 252); });
  }
  double Rms(double from, double to) const {
    return std::sqrt(Sum(from, to, [&](auto i) { return At(i) * At(i); }) / (to - from) / 48);
  }
  double Amplitude(double hz, double from, double to) const {
    const auto part = [&](double turn) {
      const auto wave = [&](auto i) { return std::sin(2 * std::numbers::pi * (hz / 48000 * double(i) + turn)); };
      return Sum(from, to, [&](auto i) { return At(i) * wave(i); }) * 2 / (to - from) / 48;
    };
    return std::hypot(part(0.0), part(0.25));
  }
};

// 1000 Hz are heard from 20 ms to 420 ms, with an amplitude of 0.4. The second channel's level is a half.
TEST_F(SoundPath, MeetsItsConditions) {
  struct Case {
    std::string kind, members;
    double (*measured)(const Recorded& recorded);
    double expected, bound;
  };
  const Case cases[] = {
      {"gap", R"("atMs": 100, "lengthMs": 2.5}, {"kind": "noise", "ratioDb": 40)",
       [](auto& r) { return r.Silent(120, 122.5); }, 120, 0},
      // A quarter of a period more than five whole ones, so that no other frames are alike.
      {"repeat", R"("atMs": 100, "lengthMs": 5.25)", [](auto& r) { return r.Repeated(30, 400); }, 252, 0},
      {"repeat", R"("atMs": 100, "lengthMs": 5.25)", [](auto& r) { return r.Repeated(120, 125.25); }, 252, 0},
      {"cut", R"("atMs": 100)", [](auto& r) { return r.Silent(21, 419); }, 299 * 48, 0},
      {"clip", R"("level": 0.25)",  // the share of a sine beyond 0.625 of its amplitude
       [](auto& r) { return r.Sum(30, 400, [&](auto i) { return std::abs(r.At(i)) == 0.25; }) / 370 / 48; }, 0.57,
       0.02},
      {"hum", R"("hz": 50, "level": 0.1)", [](auto& r) { return r.Amplitude(50, 440, 520); }, 0.1, 1e-6},
      {"hum", R"("hz": 60, "level": 0.1)", [](auto& r) { return r.Amplitude(120, 470, 520); }, 0.05, 1e-6},
      {"hum", R"("hz": 50, "level": 0.1)", [](auto& r) { return r.Amplitude(150, 440, 520); }, 0.025, 1e-6},
      {"tone", R"("hz": 3150, "level": 0.1)", [](auto& r) { return r.Amplitude(3150, 440, 520); }, 0.1, 1e-6},
      // The test tone has 0.2447 of full scale, and half of that arrives.
      {"noise", R"("ratioDb": 20)", [](auto& r) { return r.Rms(425, 520); }, 0.012235, 0.0006},
      {"speed", R"("ratio": 0.92)", [](auto& r) { return r.Amplitude(920, 30, 430); }, 0.4, 0.002},
      {"speed", R"("ratio": 0.92)", [](auto& r) { return static_cast<double>(r.samples.size()); }, 2 * 56 * 480, 0},
      {"offset", R"("level": -0.2)",
       [](auto& r) { return r.Sum(440, 520, [&](auto i) { return r.At(i, 1); }) / 80 / 48; }, -0.1, 1e-6},
      {"dead", R"("channel": 1)", [](auto& r) { return r.Silent(30, 400, 1) - r.Silent(30, 400, 0); }, 370 * 48, 0},
      {"inverted", R"("channel": 1)",
       [](auto& r) { return r.Sum(30, 400, [&](auto i) { return std::abs(r.At(i) + 2 * r.At(i, 1)); }); }, 0, 1e-4},
      {"echo", R"("delayMs": 50, "gain": 0.5)", [](auto& r) { return r.Amplitude(1000, 430, 460); }, 0.2, 1e-6},
      {"echo", R"("delayMs": 50, "gain": 0.5)", [](auto& r) { return r.Silent(420, 520); }, 50 * 48, 0},
      {"lowpass", R"("hz": 1000)", [](auto& r) { return r.Amplitude(1000, 50, 400); }, 0.4 / std::sqrt(2.0), 1e-4},
      {"lowpass", R"("hz": 250)", [](auto& r) { return r.Amplitude(1000, 50, 400); }, 0.4 / 16, 4e-4}};
  std::vector<std::int32_t> sound;
  for (int i = 0; i < 400 * 48; ++i) {
    sound.push_back(static_cast<std::int32_t>(0.8 * std::sin(2 * std::numbers::pi * i / 48 + 0.3) * 0x1p31));
  }
  for (const Case& one : cases) {
    const std::string path = R"("path": [{"kind": ")" + one.kind + "\", " + one.members + "}]";
    const std::string hears = R"("hears": [{"endpoint": "speaker", "gain": 0.5, "delayMs": 20}])";
    ASSERT_TRUE(Become(With("", R"(, "levels": [1, 0.5], )" + hears + ", " + path))) << AudioPlatformError();
    Sleep(3);  // the machine's time isn't the stream's
    const auto heard = PlayAndRecord(Format(WAVE_FORMAT_PCM, 1, 48000, 32), As<BYTE>(sound),
                                     Format(WAVE_FORMAT_PCM, 2, 48000, 32), 520);
    ASSERT_GE(heard.size(), 520U * 48 * 8);
    EXPECT_NEAR(one.measured({As<std::int32_t>(heard)}), one.expected, one.bound) << path;
  }
}

}  // namespace
