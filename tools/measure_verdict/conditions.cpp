#include "tools/measure_verdict/conditions.h"

#include <algorithm>
#include <cmath>

namespace measure_verdict {
namespace {

const std::vector<double> kLengthsMs = {1, 2, 3, 4, 5, 7, 10, 20, 50, 100};

double Ratio(double decibels) { return std::pow(10.0, decibels / 20.0); }

// An envelope's loud part lasts 45 ms. What is longer is loud when its middle is.
bool IsLoudThroughout(const HeardTone& tone, double atMs, double lengthMs) {
  const bool isMiddleLoud = tone.IsLoud(0.001 * (atMs + 0.5 * lengthMs));
  if (lengthMs > 20.0) return isMiddleLoud;
  return isMiddleLoud && tone.IsLoud(0.001 * atMs) && tone.IsLoud(0.001 * (atMs + lengthMs));
}

// Some of the tone is heard afterwards. Without that it isn't interrupted but ends.
double DrawPlace(double lengthMs, Random& random, const TestPath& path) {
  constexpr double kAfterMs = 12.0;
  return random.Between(0.0, path.HeardMs() - lengthMs - kAfterMs);
}

void AddInterruption(const char* kind, double atMs, double lengthMs, TestPath& path) {
  path.Add({{"kind", kind}, {"atMs", atMs}, {"lengthMs", lengthMs}});
}

constexpr char kGap[] = "gap", kRepeat[] = "repeat", kDead[] = "dead", kInverted[] = "inverted";

template <const char* kind>
void AddAnywhere(double ms, Random& random, TestPath& path) {
  AddInterruption(kind, DrawPlace(ms, random, path), ms, path);
}

// For so long the analysis expects echoes to build up.
constexpr double kSettlingMs = 220.0;

enum class Part { kAll, kSettled, kUnsettled };

template <const char* kind, Part part = Part::kAll>
void AddLoud(double ms, Random& random, TestPath& path) {
  if (part == Part::kUnsettled) path.echoes = {{random.Between(20.0, 120.0), random.Sign() * random.Between(0.1, 0.6)}};
  const HeardTone tone = path.Tone();
  const double settledMs = path.echoes.empty() ? 0.0 : kSettlingMs;
  for (;;) {
    const double atMs = DrawPlace(ms, random, path);
    const bool isSettled = atMs >= settledMs;
    if ((part == Part::kSettled && !isSettled) || (part == Part::kUnsettled && isSettled)) continue;
    if (!IsLoudThroughout(tone, atMs, ms)) continue;
    return AddInterruption(kind, atMs, ms, path);
  }
}

// More and more reflections, ever quieter.
void AddRoom(Random& random, TestPath& path) {
  const double decayMs = random.Between(20.0, 100.0);
  path.echoes.clear();
  for (int i = 0; i < 8; ++i) {
    const double delayMs = random.Between(1.0, 200.0);
    path.echoes.push_back({delayMs, random.Sign() * 0.5 * std::exp(-delayMs / decayMs)});
  }
  // They can add up.
  path.gain = std::clamp(path.gain, -0.3, 0.3);
}

void AddClip(double percent, Random& random, TestPath& path) {
  // The level that so many samples of the tone's second are above.
  const HeardTone tone = path.Tone();
  const double noise = path.NoiseRms();
  std::vector<double> samples(20000);
  for (double& sample : samples) {
    sample = std::abs(tone.At(random.Between(0.0, 1.0)).imag() + noise * random.Gaussian());
  }
  const auto place = samples.begin() + static_cast<std::ptrdiff_t>((1.0 - percent / 100.0) * 20000.0);
  std::nth_element(samples.begin(), place, samples.end());
  path.Add({{"kind", "clip"}, {"level", *place}});
}

void AddSine(double hz, double level, TestPath& path) {
  path.Add({{"kind", "tone"}, {"hz", hz}, {"level", std::min(1.0, level)}});
}

void AddHum(double hz, double level, TestPath& path) {
  path.Add({{"kind", "hum"}, {"hz", hz}, {"level", std::min(1.0, level)}});
}

void AddSpeed(double ratio, TestPath& path) { path.Add({{"kind", "speed"}, {"ratio", ratio}}); }

template <const char* kind>
void AddOfChannel(double, Random& random, TestPath& path) {
  path.channels = std::max(2, path.channels);
  path.Add({{"kind", kind}, {"channel", random.Whole(0, path.channels - 1)}});
}

// From one that 16 bits leave nothing of up to full scale.
double AnyLevel(Random& random) { return random.BetweenRatios(1e-5, 1.0); }

void AddAnyNoise(Random& random, TestPath& path) {
  path.Add({{"kind", "noise"}, {"ratioDb", random.Between(-15.0, 90.0)}});
}

void AddAnyHum(Random& random, TestPath& path) { AddHum(random.OneOf({50.0, 60.0}), AnyLevel(random), path); }

void AddAnyOffset(Random& random, TestPath& path) {
  path.Add({{"kind", "offset"}, {"level", random.Sign() * AnyLevel(random)}});
}

void AddSomeLines(double, Random& random, TestPath& path) {
  const double level = AnyLevel(random);
  for (int i = random.Whole(2, 3); i > 0; --i) {
    AddSine(1185.0 + 5.0 * random.Whole(0, 6), level * random.Between(0.2, 1.0), path);
  }
}

}  // namespace

const std::vector<Condition>& Faults() {
  static const std::vector<Condition> kFaults = {
      {"gap where the tone is loud", "ms", kLengthsMs, AddLoud<kGap>, "interruptions", 5},
      {"gap anywhere", "ms", kLengthsMs, AddAnywhere<kGap>, "interruptions"},
      {"repeat where the tone is loud, echoes having built up", "ms", kLengthsMs, AddLoud<kRepeat, Part::kSettled>,
       "interruptions", 5},
      {"repeat where the tone is loud, while an echo builds up", "ms", kLengthsMs, AddLoud<kRepeat, Part::kUnsettled>,
       "interruptions"},
      {"repeat anywhere", "ms", kLengthsMs, AddAnywhere<kRepeat>, "interruptions"},
      {"clipping, share of samples", "%", {0.5, 1, 2, 3, 5, 10, 20, 40}, AddClip, "distortion", 3},
      {"white noise, tone above it",
       "dB",
       {16, 14, 12, 11, 10, 9, 8, 5, 0},
       [](double decibels, Random&, TestPath& path) { path.signalToNoiseDb = decibels; },
       "noise"},
      {"mains hum, tone above it",
       "dB",
       {16, 14, 12, 11, 10, 9, 8, 5, 0},
       [](double decibels, Random& random, TestPath& path) {
         constexpr double kRmsOfHarmonics = 0.81;  // of 1, 1/2 and 1/4
         AddHum(random.OneOf({50.0, 60.0}), path.Tone().Rms() * Ratio(-decibels) / kRmsOfHarmonics, path);
       },
       "noise"},
      {"another tone, 100 to 7000 Hz, tone above it",
       "dB",
       {16, 14, 12, 11, 10, 9, 8, 5, 0},
       [](double decibels, Random& random, TestPath& path) {
         AddSine(random.BetweenRatios(100.0, 7000.0), std::sqrt(2.0) * path.Tone().Rms() * Ratio(-decibels), path);
       },
       "noise"},
      {"speed too high or too low",
       "%",
       {0.05, 0.1, 0.12, 0.15, 0.18, 0.2, 0.3, 0.5, 1, 8},
       [](double percent, Random& random, TestPath& path) { AddSpeed(1.0 + 0.01 * percent * random.Sign(), path); },
       "speed",
       0.2},
      {"cut short, sound missing before the recording's end",
       "ms",
       {20, 50, 80, 100, 120, 150, 200, 300, 500},
       [](double ms, Random&, TestPath& path) {
         path.Add({{"kind", "cut"}, {"atMs", path.HeardMs() - ms}});
       },
       "duration"},
      {"constant offset, of full scale",
       "",
       {0.01, 0.02, 0.05, 0.06, 0.1, 0.2},
       [](double level, Random& random, TestPath& path) {
         path.Add({{"kind", "offset"}, {"level", level * random.Sign()}});
       },
       "noise"},
      {"dead channel", "", {1}, AddOfChannel<kDead>, "channels"},
      {"inverted channel", "", {1}, AddOfChannel<kInverted>, "channels"},
      {"low-pass of second order at",
       "Hz",
       {1000, 700, 500, 300, 200, 100},
       [](double hz, Random&, TestPath& path) { path.lowpassHz = hz; }},
      {"loud gap in a tone of which 5 % are clipped",
       "ms",
       {5, 10, 20},
       [](double ms, Random& random, TestPath& path) {
         AddClip(5.0, random, path);
         AddLoud<kGap>(ms, random, path);
       },
       "interruptions"},
      {"loud gap in a tone that is 8 % low",
       "ms",
       {5, 10, 20},
       [](double ms, Random& random, TestPath& path) {
         AddSpeed(44.1 / 48.0, path);
         AddLoud<kGap>(ms, random, path);
       },
       "interruptions"},
      {"loud gap in a tone 12 dB above noise",
       "ms",
       {5, 10, 20},
       [](double ms, Random& random, TestPath& path) {
         path.signalToNoiseDb = 12.0;
         AddLoud<kGap>(ms, random, path);
       },
       "interruptions"},
      {"loud gap in a room of eight echoes",
       "ms",
       {5, 10, 20},
       [](double ms, Random& random, TestPath& path) {
         AddRoom(random, path);
         AddLoud<kGap>(ms, random, path);
       },
       "interruptions"},
      {"no fault, a room of eight echoes",
       "",
       {1},
       [](double, Random& random, TestPath& path) { AddRoom(random, path); }},
      {"loud gap and a loud repeat",
       "ms",
       {5, 10, 20},
       [](double ms, Random& random, TestPath& path) {
         AddLoud<kGap>(ms, random, path);
         AddLoud<kRepeat>(ms, random, path);
       },
       "interruptions"},
  };
  return kFaults;
}

const std::vector<Condition>& Impostors() {
  static const std::vector<double> kOnce = {1};
  static const std::vector<Condition> kImpostors = {
      {"noise", "", kOnce, [](double, Random& random, TestPath& path) { AddAnyNoise(random, path); }},
      {"mains hum", "", kOnce, [](double, Random& random, TestPath& path) { AddAnyHum(random, path); }},
      {"a sine, 60 to 7000 Hz", "", kOnce,
       [](double, Random& random, TestPath& path) {
         AddSine(random.BetweenRatios(60.0, 7000.0), AnyLevel(random), path);
       }},
      {"a sine of 1200 Hz", "", kOnce,
       [](double, Random& random, TestPath& path) { AddSine(1200.0, AnyLevel(random), path); }},
      {"a sine near 1200 Hz", "", kOnce,
       [](double, Random& random, TestPath& path) { AddSine(random.Between(1150.0, 1250.0), AnyLevel(random), path); }},
      {"two to five sines", "", kOnce,
       [](double, Random& random, TestPath& path) {
         for (int i = random.Whole(2, 5); i > 0; --i) {
           AddSine(random.BetweenRatios(60.0, 7000.0), AnyLevel(random), path);
         }
       }},
      {"two or three of the tone's seven lines", "", kOnce, AddSomeLines},
      {"a gap over all of the tone", "", kOnce,
       [](double, Random& random, TestPath& path) {
         path.hearsSpeaker = true;
         AddInterruption("gap", 0.0, 3000.0, path);
         if (random.Chance(0.5)) AddAnyOffset(random, path);
       }},
      {"silence", "", kOnce, [](double, Random&, TestPath&) {}},
      {"an offset alone", "", kOnce, [](double, Random& random, TestPath& path) { AddAnyOffset(random, path); }},
      {"noise, hum, a sine and an offset", "", kOnce,
       [](double, Random& random, TestPath& path) {
         AddAnyNoise(random, path);
         AddAnyHum(random, path);
         AddSine(random.BetweenRatios(60.0, 7000.0), AnyLevel(random), path);
         AddAnyOffset(random, path);
       }},
  };
  return kImpostors;
}

}  // namespace measure_verdict
