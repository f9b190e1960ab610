#include "host/analysis/baseband.h"

#include <algorithm>
#include <cmath>

#include "host/analysis/tone.h"

namespace host {
namespace {

constexpr double kWindowCycles = 6.0;
constexpr double kValuesPerSecond = 1000.0;

// A Hann window, symmetric around its middle, without the zeros at its ends. It adds up to 2, since a sine's amplitude
// is twice that of its positive frequency.
std::vector<double> HannTaps(double rate) {
  const double length = kWindowCycles / kToneHz * rate;
  const auto half = static_cast<std::ptrdiff_t>(std::ceil(length / 2.0)) - 1;
  std::vector<double> taps;
  double sum = 0.0;
  for (std::ptrdiff_t i = -half; i <= half; ++i) {
    taps.push_back(1.0 + Phasor(static_cast<double>(i) / length).real());
    sum += taps.back();
  }
  for (double& tap : taps) tap *= 2.0 / sum;
  return taps;
}

}  // namespace

Baseband Demodulate(std::span<const double> samples, double rate, double speed) {
  Baseband baseband;
  baseband.rate = rate / speed;
  baseband.hop = static_cast<std::size_t>(std::max(1.0, std::round(baseband.rate / kValuesPerSecond)));
  const double cyclesPerSample = kToneHz / baseband.rate;
  const std::vector<double> taps = HannTaps(baseband.rate);
  const std::size_t half = taps.size() / 2;
  std::vector<double> real(taps.size());
  std::vector<double> imaginary(taps.size());
  for (std::size_t i = 0; i < taps.size(); ++i) {
    const auto turned = taps[i] * Phasor(cyclesPerSample * (static_cast<double>(half) - static_cast<double>(i)));
    real[i] = turned.real();
    imaginary[i] = turned.imag();
  }
  for (std::size_t middle = 0; middle < samples.size(); middle += baseband.hop) {
    const std::size_t first = middle < half ? half - middle : 0;
    const std::size_t last = std::min(taps.size(), samples.size() + half - middle);
    const double* sample = samples.data() + (middle + first - half);
    double sumReal = 0.0;
    double sumImaginary = 0.0;
    for (std::size_t i = first; i < last; ++i, ++sample) {
      sumReal += *sample * real[i];
      sumImaginary += *sample * imaginary[i];
    }
    const double cycles = cyclesPerSample * static_cast<double>(middle);
    baseband.values.push_back(std::complex(sumReal, sumImaginary) * Phasor(-std::fmod(cycles, 1.0)));
  }
  return baseband;
}

void Retune(Baseband& baseband, double share) {
  const std::complex<double> turn = Phasor(-kToneHz * share * baseband.SecondsPerValue());
  std::complex<double> turned = 1.0;
  for (std::complex<double>& value : baseband.values) {
    value *= turned;
    turned *= turn;
  }
  baseband.rate /= 1.0 + share;
}

double BasebandResponse(const Baseband& baseband, double offsetHz) {
  const std::vector<double> taps = HannTaps(baseband.rate);
  const double half = static_cast<double>(taps.size() / 2);
  double response = 0.0;
  for (std::size_t i = 0; i < taps.size(); ++i) {
    response += 0.5 * taps[i] * Phasor(offsetHz / baseband.rate * (static_cast<double>(i) - half)).real();
  }
  return response;
}

}  // namespace host
