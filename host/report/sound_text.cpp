#include "host/report/sound_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "host/base/text_output.h"

namespace host {
namespace {

std::string Level(double amplitude) {
  return amplitude > 0.0 ? fmt::format("{:.1f} dBFS", Decibels(amplitude)) : "none";
}

}  // namespace

std::vector<std::string> SoundFigures(const SoundSummary& sound) {
  std::vector<std::string> figures = {"peak " + Level(sound.peak), "RMS " + Level(sound.rms),
                                      "noise floor " + Level(sound.noiseFloor)};
  if (sound.dominantHz > 0.0) figures.push_back("strongest at " + FrequencyText(sound.dominantHz));
  if (sound.fullScaleSamples > 0) {
    figures.push_back(
        fmt::format("{} sample{} at full scale", sound.fullScaleSamples, sound.fullScaleSamples == 1 ? "" : "s"));
  }
  return figures;
}

std::string FrequencyText(double hertz) {
  if (hertz < 1000.0) return fmt::format("{:.0f} Hz", hertz);
  return fmt::format("{:.4g} kHz", hertz / 1000.0);
}

double WaveformScale(double peak) {
  double scale = 1.0;
  for (double decade = 1.0; decade > 0.0005; decade /= 10.0) {
    for (const double step : {1.0, 0.5, 0.2}) {
      if (step * decade < std::max(peak, 0.001)) return scale;
      scale = step * decade;
    }
  }
  return scale;
}

double SpectrumPosition(const SoundSummary& sound, double hertz) {
  return std::log(hertz / SoundSummary::kLowestHz) / std::log(sound.highestHz / SoundSummary::kLowestHz);
}

}  // namespace host
