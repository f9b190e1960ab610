#include "tools/measure_verdict/test_path.h"

#include <algorithm>
#include <cmath>

namespace measure_verdict {
namespace {

constexpr double kLeastSignalToNoiseDb = 20.0;
// The module holds 2,000,000 bytes of what it captures in a little more than a second.
constexpr double kMostBytesPerSecond = 1.6e6;
constexpr double kLeastPeak = 0.0115;
constexpr double kMostPeak = 0.98;
constexpr double kNoisePeak = 5.0;  // against its root mean square, over a second

double Decibels(double ratio) { return 20.0 * std::log10(ratio); }

std::vector<Echo> DrawEcho(Random& random) {
  if (random.Chance(0.4)) return {};
  return {{random.Between(1.0, 120.0), random.Sign() * random.Between(0.05, 0.6)}};
}

bool IsGood(const TestPath& path) {
  const double peak = path.Tone().Peak();
  return peak >= kLeastPeak && peak + kNoisePeak * path.NoiseRms() <= kMostPeak &&
         path.SignalToRoundingDb() >= kLeastSignalToNoiseDb;
}

}  // namespace

double TestPath::NoiseRms() const {
  const double rounding = std::exp2(1.0 - bits) / std::sqrt(12.0);
  const double wanted = Tone().Rms() * std::pow(10.0, -signalToNoiseDb / 20.0);
  return std::sqrt(std::max(0.0, wanted * wanted - rounding * rounding));
}

double TestPath::SignalToRoundingDb() const {
  return Decibels(Tone().Rms() / (std::exp2(1.0 - bits) / std::sqrt(12.0)));
}

std::string TestPath::Description() const {
  host::Json path = host::Json::array();
  for (const Echo& echo : echoes) path.push_back({{"kind", "echo"}, {"delayMs", echo.delayMs}, {"gain", echo.gain}});
  if (lowpassHz > 0.0) path.push_back({{"kind", "lowpass"}, {"hz", lowpassHz}});
  if (const double noise = hearsSpeaker ? NoiseRms() : 0.0; noise > 0.0) {
    const double ratioDb = Decibels(HeardTone::PlainRms() * std::abs(gain) / noise);
    path.push_back({{"kind", "noise"}, {"ratioDb", std::min(140.0, ratioDb)}});
  }
  path.insert(path.end(), conditions.begin(), conditions.end());
  // More than 16 bits come with a count of those that are valid.
  const host::Json integers = {{"tag", bits > 16 ? "extensible" : "pcm"},
                               {"channels", channels},
                               {"rate", static_cast<int>(rate)},
                               {"bits", bits}};
  host::Json microphone = {
      {"id", kMicrophoneId}, {"flow", "capture"}, {"default", {"console", "multimedia"}}, {"format", integers}};
  if (isFloat) {
    microphone["format"] = {{"tag", "float"}, {"channels", channels}, {"rate", static_cast<int>(rate)}};
    microphone["closest"] = integers;
  }
  microphone["hears"] = host::Json::array();
  if (hearsSpeaker) microphone["hears"].push_back({{"endpoint", kSpeakerId}, {"gain", gain}, {"delayMs", delayMs}});
  microphone["path"] = path;
  const host::Json speaker = {{"id", kSpeakerId}, {"flow", "render"}, {"default", {"console", "multimedia"}}};
  return host::TextOf({{"clock", "virtual"}, {"seed", seed}, {"endpoints", {speaker, microphone}}});
}

TestPath DrawGoodPath(Random& random) {
  TestPath path;
  path.seed = static_cast<std::uint32_t>(random.Whole(1, 2'000'000'000));
  do {
    path.rate = random.OneOf({16000.0, 22050.0, 24000.0, 32000.0, 44100.0, 48000.0, 48000.0, 96000.0});
    path.bits = static_cast<int>(random.OneOf({8.0, 16.0, 16.0, 24.0, 32.0}));
    path.channels = static_cast<int>(random.OneOf({1.0, 1.0, 1.0, 2.0, 2.0, 3.0, 8.0}));
  } while (path.rate * path.channels * path.bits / 8.0 > kMostBytesPerSecond);
  path.isFloat = path.bits <= 16 && random.Chance(0.3);
  if (random.Chance(0.1)) {
    path.rate = 16000.0;
    path.bits = 8;
    path.channels = 1;
  }
  path.delayMs = random.Whole(0, random.Chance(0.5) ? 30 : 300);
  do {
    path.echoes = DrawEcho(random);
    path.lowpassHz = random.Chance(0.5) ? random.BetweenRatios(3400.0, 12000.0) : 0.0;
    path.gain = random.Sign() * std::pow(10.0, random.Between(-36.0, 0.0) / 20.0);
    path.signalToNoiseDb = random.Between(kLeastSignalToNoiseDb, random.Chance(0.3) ? 25.0 : 75.0);
  } while (!IsGood(path));
  return path;
}

}  // namespace measure_verdict
