#include "host/listening/spectrum.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <complex>
#include <kissfft/kissfft.hh>
#include <numbers>
#include <numeric>

namespace host {
namespace {

std::vector<double> HannWindow(std::size_t size) {
  std::vector<double> window(size);
  for (std::size_t i = 0; i < size; ++i) {
    window[i] = 0.5 - 0.5 * std::cos(2.0 * std::numbers::pi * static_cast<double>(i) / static_cast<double>(size));
  }
  return window;
}

}  // namespace

double Median(std::span<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return values.size() % 2 == 1 ? *middle : 0.5 * (*std::max_element(values.begin(), middle) + *middle);
}

std::optional<PowerSpectrum> FindPowerSpectrum(std::span<const float> samples, double rate) {
  const std::size_t size = std::bit_ceil(static_cast<std::size_t>(rate / 12.0));
  if (size < 8 || samples.size() < size) return std::nullopt;
  const std::vector<double> window = HannWindow(size);
  const double windowPower = std::inner_product(window.begin(), window.end(), window.begin(), 0.0);
  const double offset = std::accumulate(samples.begin(), samples.end(), 0.0) / static_cast<double>(samples.size());
  const std::size_t bins = size / 2;
  const std::size_t segments = (samples.size() - size) / bins + 1;

  const kissfft<double> transform(bins, false);
  std::vector<double> segment(size);
  std::vector<std::complex<double>> transformed(bins);
  // By bin, then by segment, for the medians.
  std::vector<double> powers(bins * segments);
  for (std::size_t s = 0; s < segments; ++s) {
    for (std::size_t i = 0; i < size; ++i) segment[i] = (samples[s * bins + i] - offset) * window[i];
    transform.transform_real(segment.data(), transformed.data());
    // Two for the frequencies below zero. Bin 0 also holds the one at half the rate, and is what is left of the mean.
    for (std::size_t k = 1; k < bins; ++k) {
      powers[k * segments + s] = 2.0 * std::norm(transformed[k]) / (static_cast<double>(size) * windowPower);
    }
  }

  PowerSpectrum spectrum{.binHz = rate / static_cast<double>(size), .mean = {}, .median = {}};
  for (std::size_t k = 0; k < bins; ++k) {
    const std::span<double> bin(&powers[k * segments], segments);
    spectrum.mean.push_back(std::accumulate(bin.begin(), bin.end(), 0.0) / static_cast<double>(segments));
    // The power of noise in a bin is distributed exponentially, with its median at ln 2 of its mean.
    spectrum.median.push_back(Median(bin) / std::numbers::ln2);
  }
  return spectrum;
}

}  // namespace host
