#include "host/report/sound_text.h"

#include <fmt/core.h>

#include <algorithm>
#include <cmath>

#include "host/base/text_output.h"

namespace host {
namespace {

constexpr double kSilentPeak = 0.001;  // -60 dBFS

std::string Level(double amplitude) {
  return amplitude > 0.0 ? fmt::format("{:.1f} dBFS", Decibels(amplitude)) : "none";
}

}  // namespace

std::vector<std::string> SoundFigures(const SoundSummary& sound) {
  if (sound.peak <= 0.0) return {SilenceText(sound)};
  std::vector<std::string> figures = {IsSilent(sound) ? SilenceText(sound) : "peak " + Level(sound.peak),
                                      "RMS " + Level(sound.rms), "noise floor " + Level(sound.noiseFloor)};
  if (sound.dominantHz > 0.0) figures.push_back("strongest at " + FrequencyText(sound.dominantHz));
  if (sound.fullScaleSamples > 0) {
    figures.push_back(
        fmt::format("{} sample{} at full scale", sound.fullScaleSamples, sound.fullScaleSamples == 1 ? "" : "s"));
  }
  return figures;
}

bool IsSilent(const SoundSummary& sound) { return sound.peak < kSilentPeak; }

std::string SilenceText(const SoundSummary& sound) {
  if (sound.peak <= 0.0) return "silence";
  return fmt::format("as good as silence: never above {:.0f} dBFS", Decibels(sound.peak));
}

std::string FrequencyText(double hertz) {
  if (hertz < 1000.0) return fmt::format("{:.0f} Hz", hertz);
  return fmt::format("{:.4g} kHz", hertz / 1000.0);
}

double WaveformScale(double peak) {
  double scale = 1.0;
  if (peak < kSilentPeak) return scale;
  for (double decade = 1.0;; decade /= 10.0) {
    for (const double step : {1.0, 0.5, 0.2}) {
      if (step * decade < peak) return scale;
      scale = step * decade;
    }
  }
}

double SpectrumPosition(const SoundSummary& sound, double hertz) {
  return std::log(hertz / SoundSummary::kLowestHz) / std::log(sound.highestHz / SoundSummary::kLowestHz);
}

}  // namespace host
