#pragma once

#include <optional>
#include <span>
#include <vector>

namespace host {

// The power of a sound by frequency, by Welch's method (P. D. Welch, "The use of fast Fourier transform for the
// estimation of power spectra", 1967), with a Hann window and half overlap. Bin k stands for k * binHz, up to half the
// rate. The bins of a list add up to the mean square of the sound without its mean.
struct PowerSpectrum {
  double binHz = 0.0;
  std::vector<double> mean;    // over time
  std::vector<double> median;  // over time, scaled to be equal to the mean for noise: clicks and pauses don't count
};

// Nothing when there are too few samples for one window, the least power of two that lasts a twelfth of a second.
std::optional<PowerSpectrum> FindPowerSpectrum(std::span<const float> samples, double rate);

// The middle one of `values`, or the mean of the middle two. There must be one; their order changes.
double Median(std::span<double> values);

}  // namespace host
