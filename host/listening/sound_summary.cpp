#include "host/listening/sound_summary.h"

#include <algorithm>
#include <cmath>

#include "host/listening/spectrum.h"

namespace host {
namespace {

constexpr std::size_t kSlices = 600;
constexpr std::size_t kBands = 300;
constexpr double kHighestHz = 20000.0;
constexpr float kFullScale = 0.9999F;

std::vector<std::pair<double, double>> EnvelopeOf(std::span<const float> samples) {
  const std::size_t slices = std::min(kSlices, samples.size());
  std::vector<std::pair<double, double>> envelope;
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
  std::vector<double> levels(spectrum.mean.size(), SoundSummary::kLowestLevel);
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

std::vector<double> BandsOf(const std::vector<double>& levels, double binHz, double highestHz) {
  const double ratio = std::pow(highestHz / SoundSummary::kLowestHz, 1.0 / kBands);
  std::vector<double> bands;
  double from = SoundSummary::kLowestHz / binHz;
  for (std::size_t band = 0; band < kBands; ++band) {
    bands.push_back(BandLevel(levels, from, from * ratio));
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

// To so many significant digits.
double Rounded(double value, int digits) {
  if (value == 0.0 || !std::isfinite(value)) return value;
  // A power of ten with a whole exponent above zero is exact, so that the quotient is the double nearest to its digits.
  const int decimals = digits - 1 - static_cast<int>(std::floor(std::log10(std::abs(value))));
  const double scale = std::pow(10.0, std::abs(decimals));
  return decimals >= 0 ? std::round(value * scale) / scale : std::round(value / scale) * scale;
}

void RoundFigures(SoundSummary& summary) {
  for (double* figure : {&summary.rate, &summary.seconds, &summary.peak, &summary.rms, &summary.noiseFloor,
                         &summary.dominantHz, &summary.highestHz}) {
    *figure = Rounded(*figure, 6);
  }
  for (auto& [least, largest] : summary.envelope) {
    least = Rounded(least, 4);
    largest = Rounded(largest, 4);
  }
  for (double& level : summary.spectrum) level = std::round(level * 10.0) / 10.0;
}

}  // namespace

std::optional<SoundSummary> Summarise(std::span<const float> samples, double rate) {
  if (rate < 100.0) return std::nullopt;
  std::optional<PowerSpectrum> spectrum = FindPowerSpectrum(samples, rate);
  if (!spectrum.has_value()) return std::nullopt;

  SoundSummary summary;
  summary.rate = rate;
  summary.seconds = static_cast<double>(samples.size()) / rate;
  double squares = 0.0;
  for (const float sample : samples) {
    summary.peak = std::max<double>(summary.peak, std::abs(sample));
    squares += static_cast<double>(sample) * sample;
    if (std::abs(sample) >= kFullScale) ++summary.fullScaleSamples;
  }
  summary.rms = std::sqrt(squares / static_cast<double>(samples.size()));
  summary.envelope = EnvelopeOf(samples);

  const std::vector<double> levels = LevelsOf(*spectrum);
  summary.highestHz = std::min(kHighestHz, rate / 2.0);
  summary.spectrum = BandsOf(levels, spectrum->binHz, summary.highestHz);
  const auto lowest = static_cast<std::size_t>(std::ceil(SoundSummary::kLowestHz / spectrum->binHz));
  const bool isSilent = std::ranges::max(levels) <= SoundSummary::kLowestLevel;
  if (!isSilent) summary.dominantHz = DominantBin(spectrum->mean, lowest) * spectrum->binHz;
  summary.noiseFloor =
      std::sqrt(Median(std::span(spectrum->median).subspan(lowest)) * static_cast<double>(spectrum->median.size()));
  RoundFigures(summary);
  return summary;
}

}  // namespace host
