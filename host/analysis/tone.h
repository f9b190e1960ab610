#pragma once

#include <complex>
#include <cstddef>
#include <numbers>

namespace host {

// The test tone: a carrier with an envelope, the sum of seven sines 5 Hz apart, of equal amplitudes and alternating
// signs, which all start at phase 0. The generator's single-precision value of two pi lowers every frequency by less
// than a millionth, which nothing here can tell.
//
// The envelope repeats every 0.2 s. Its peak stands in the middle of that, with nulls a seventh of 0.2 s to either
// side; what lies between two peaks is at least 13 dB quieter.
constexpr double kToneHz = 1200.0;
constexpr double kPartialStepHz = 5.0;
constexpr std::size_t kPartials = 7;
constexpr double kToneSeconds = 1.0;
constexpr double kEnvelopeSeconds = 1.0 / kPartialStepHz;

// How far a partial lies from the carrier.
constexpr double PartialOffsetHz(std::size_t partial) { return kPartialStepHz * (static_cast<double>(partial) - 3.0); }

inline std::complex<double> Phasor(double cycles) { return std::polar(1.0, 2.0 * std::numbers::pi * cycles); }

}  // namespace host
