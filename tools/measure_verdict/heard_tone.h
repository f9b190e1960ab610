#pragma once

#include <complex>
#include <vector>

namespace measure_verdict {

struct Echo {
  double delayMs = 0.0;
  double gain = 0.0;
};

// The tone as it arrives with its echoes, from its formula. Full scale is 1.0, and time begins with the tone.
class HeardTone {
 public:
  HeardTone(double gain, std::vector<Echo> echoes);

  // The sound is the imaginary part, the envelope the absolute value.
  std::complex<double> At(double seconds) const;
  double Peak() const { return peak_; }  // of the envelope
  double Rms() const { return rms_; }    // over the tone's second
  // Whether the envelope is above a quarter of its peak.
  bool IsLoud(double seconds) const { return std::abs(At(seconds)) > 0.25 * peak_; }

  static constexpr double kAmplitude = 30000.0 / 32768.0;  // of the tone that the module plays
  static double PlainRms();                                // of that tone

 private:
  double gain_;
  std::vector<Echo> echoes_;
  double peak_ = 0.0;
  double rms_ = 0.0;
};

}  // namespace measure_verdict
