#pragma once

#include <complex>
#include <cstddef>
#include <span>
#include <vector>

namespace host {

// A sound turned down in frequency by the tone's carrier and low-passed: value m is the complex amplitude around
// sample m * hop, about one a millisecond. Each is seen through a Hann window of six cycles of the carrier, so nothing
// is left of an offset and of the carrier's harmonics, and a sound 200 Hz away is halved.
//
// Times are the tone's own: a tone that plays at half speed has two seconds, which count as one here.
struct Baseband {
  double rate = 0.0;  // samples per second of the tone's own time
  std::size_t hop = 1;
  std::vector<std::complex<double>> values;

  double SecondsPerValue() const { return static_cast<double>(hop) / rate; }
  double Seconds(std::size_t value) const { return static_cast<double>(value) * SecondsPerValue(); }
};

// Of samples at `rate` per second in which the tone runs at `speed`; the rate must be above twice its frequency.
Baseband Demodulate(std::span<const double> samples, double rate, double speed);

// Turns the values as if the tone ran faster by a share of some thousandths at most.
void Retune(Baseband& baseband, double share);

// What the window leaves of a partial that lies `offsetHz` from the carrier.
double BasebandResponse(const Baseband& baseband, double offsetHz);

}  // namespace host
