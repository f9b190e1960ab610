#include "host/analysis/spectrum_of_stretch.h"

#include <bit>
#include <cmath>
#include <complex>
#include <kissfft/kissfft.hh>

#include "host/analysis/tone.h"

namespace host {

StretchSpectrum TransformStretch(std::span<const double> samples, double rate, StretchWindow window) {
  const std::size_t size = std::bit_ceil(samples.size());
  const std::size_t bins = size / 2;
  std::vector<double> padded(samples.begin(), samples.end());
  double windowPower = static_cast<double>(samples.size());
  if (window == StretchWindow::kHann) {
    windowPower *= 3.0 / 8.0;
    const std::complex<double> step = Phasor(1.0 / static_cast<double>(samples.size()));
    std::complex<double> turned = 1.0;
    for (double& sample : padded) {
      sample *= 0.5 - 0.5 * turned.real();
      turned *= step;
    }
  }
  padded.resize(size);

  const kissfft<double> transform(bins, false);
  std::vector<std::complex<double>> transformed(bins);
  transform.transform_real(padded.data(), transformed.data());
  StretchSpectrum spectrum{.binHz = rate / static_cast<double>(size), .power = std::vector<double>(bins)};
  // Two for the frequencies below zero. Bin 0 is left at nothing: the mean has been taken away.
  for (std::size_t k = 1; k < bins; ++k) {
    spectrum.power[k] = 2.0 * std::norm(transformed[k]) / (static_cast<double>(size) * windowPower);
  }
  return spectrum;
}

}  // namespace host
