#include "host/listening/heard.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "host/listening/spectrum.h"
#include "host/report/json_output.h"
#include "host/report/json_reading.h"

namespace host {
namespace {

constexpr std::size_t kSlices = 600;
constexpr std::size_t kBands = 300;
constexpr double kHighestHz = 20000.0;
constexpr float kFullScale = 0.9999F;

std::vector<std::pair<float, float>> EnvelopeOf(std::span<const float> samples) {
  const std::size_t slices = std::min(kSlices, samples.size());
  std::vector<std::pair<float, float>> envelope;
  for (std::size_t slice = 0; slice < slices; ++slice) {
    const std::size_t begin = slice * samples.size() / slices;
    const std::size_t end = (slice + 1) * samples.size() / slices;
    const auto [least, largest] = std::ranges::minmax(samples.subspan(begin, end - begin));
    envelope.emplace_back(least, largest);
  }
  return envelope;
}

// The level of a tone at each bin. The window spreads a tone over three bins, wherever between two of them it lies; its
// power is lost by 0.1 dB at most.
std::vector<double> LevelsOf(const PowerSpectrum& spectrum) {
  std::vector<double> levels(spectrum.mean.size(), Heard::kLowestLevel);
  for (std::size_t k = 1; k + 1 < levels.size(); ++k) {
    const double power = spectrum.mean[k - 1] + spectrum.mean[k] + spectrum.mean[k + 1];
    // A sine of full scale has a mean square of one half.
    levels[k] = std::max(levels[k], 10.0 * std::log10(2.0 * power));
  }
  return levels;
}

// The highest level in a band, or between two bins where the band lies between them.
double BandLevel(const std::vector<double>& levels, double from, double to) {
  const auto at = [&](double position) {
    const auto below = std::min(static_cast<std::size_t>(position), levels.size() - 2);
    const double share = std::min(position - static_cast<double>(below), 1.0);
    return levels[below] + share * (levels[below + 1] - levels[below]);
  };
  double level = std::max(at(from), at(to));
  for (auto bin = static_cast<std::size_t>(std::ceil(from)); static_cast<double>(bin) <= to && bin < levels.size();
       ++bin) {
    level = std::max(level, levels[bin]);
  }
  return level;
}

std::vector<float> BandsOf(const std::vector<double>& levels, double binHz, double highestHz) {
  const double ratio = std::pow(highestHz / Heard::kLowestHz, 1.0 / kBands);
  std::vector<float> bands;
  double from = Heard::kLowestHz / binHz;
  for (std::size_t band = 0; band < kBands; ++band) {
    bands.push_back(static_cast<float>(BandLevel(levels, from, from * ratio)));
    from *= ratio;
  }
  return bands;
}

// The top of the parabola through the logarithms of the highest power and its neighbours (J. O. Smith, "Spectral Audio
// Signal Processing", on quadratic interpolation of spectral peaks).
double DominantBin(const std::vector<double>& powers, std::size_t lowest) {
  const auto highest = std::max_element(powers.begin() + static_cast<std::ptrdiff_t>(lowest), powers.end() - 1);
  const auto level = [](double power) { return std::log(std::max(power, 1e-30)); };
  const double below = level(highest[-1]), top = level(highest[0]), above = level(highest[1]);
  const double curvature = below - 2.0 * top + above;
  const double shift = curvature < 0.0 ? std::clamp(0.5 * (below - above) / curvature, -0.5, 0.5) : 0.0;
  return static_cast<double>(highest - powers.begin()) + shift;
}

std::string Rounded(double value) {
  return std::isfinite(value) ? fmt::format("{:.6g}", value) : "null";
}

}  // namespace

std::optional<Heard> Analyse(std::span<const float> samples, double rate) {
  if (rate < 100.0) return std::nullopt;
  std::optional<PowerSpectrum> spectrum = FindPowerSpectrum(samples, rate);
  if (!spectrum.has_value()) return std::nullopt;

  Heard heard;
  heard.rate = rate;
  heard.seconds = static_cast<double>(samples.size()) / rate;
  double squares = 0.0;
  for (const float sample : samples) {
    heard.peak = std::max<double>(heard.peak, std::abs(sample));
    squares += static_cast<double>(sample) * sample;
    if (std::abs(sample) >= kFullScale) ++heard.fullScaleSamples;
  }
  heard.rms = std::sqrt(squares / static_cast<double>(samples.size()));
  heard.envelope = EnvelopeOf(samples);

  const std::vector<double> levels = LevelsOf(*spectrum);
  heard.highestHz = std::min(kHighestHz, rate / 2.0);
  heard.spectrum = BandsOf(levels, spectrum->binHz, heard.highestHz);
  const auto lowest = static_cast<std::size_t>(std::ceil(Heard::kLowestHz / spectrum->binHz));
  const bool isSilent = std::ranges::max(levels) <= Heard::kLowestLevel;
  if (!isSilent) heard.dominantHz = DominantBin(spectrum->mean, lowest) * spectrum->binHz;
  heard.noiseFloor =
      std::sqrt(Median(std::span(spectrum->median).subspan(lowest)) * static_cast<double>(spectrum->median.size()));
  return heard;
}

std::string HeardJson(const Heard& heard) {
  std::vector<std::string> envelope, spectrum;
  for (const auto& [least, largest] : heard.envelope) {
    envelope.push_back(JsonArray({fmt::format("{:.4g}", least), fmt::format("{:.4g}", largest)}));
  }
  for (const float level : heard.spectrum) spectrum.push_back(fmt::format("{:.1f}", level));
  return JsonObject({{"rate", Rounded(heard.rate)},
                     {"seconds", Rounded(heard.seconds)},
                     {"peak", Rounded(heard.peak)},
                     {"rms", Rounded(heard.rms)},
                     {"noiseFloor", Rounded(heard.noiseFloor)},
                     {"dominantHz", Rounded(heard.dominantHz)},
                     {"fullScaleSamples", fmt::to_string(heard.fullScaleSamples)},
                     {"highestHz", Rounded(heard.highestHz)},
                     {"envelope", JsonArray(envelope)},
                     {"spectrum", JsonArray(spectrum)}});
}

std::optional<Heard> ReadHeard(const rapidjson::Value& value) {
  Heard heard;
  heard.rate = NumberIn(value, "rate");
  heard.seconds = NumberIn(value, "seconds");
  heard.peak = NumberIn(value, "peak");
  heard.rms = NumberIn(value, "rms");
  heard.noiseFloor = NumberIn(value, "noiseFloor");
  heard.dominantHz = NumberIn(value, "dominantHz");
  heard.fullScaleSamples = static_cast<std::size_t>(std::clamp(NumberIn(value, "fullScaleSamples"), 0.0, 1e15));
  heard.highestHz = NumberIn(value, "highestHz");
  for (const rapidjson::Value& slice : ListIn(value, "envelope")) {
    if (!slice.IsArray() || slice.Size() != 2 || !slice[0].IsNumber() || !slice[1].IsNumber()) return std::nullopt;
    heard.envelope.emplace_back(slice[0].GetFloat(), slice[1].GetFloat());
  }
  for (const rapidjson::Value& level : ListIn(value, "spectrum")) {
    if (!level.IsNumber()) return std::nullopt;
    heard.spectrum.push_back(level.GetFloat());
  }
  if (heard.envelope.empty() || heard.spectrum.empty()) return std::nullopt;
  if (heard.seconds <= 0.0 || heard.highestHz <= Heard::kLowestHz) return std::nullopt;
  return heard;
}

}  // namespace host
