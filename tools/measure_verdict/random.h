#pragma once

#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <random>

namespace measure_verdict {

// Numbers that follow from a seed, with every standard library the same ones.
class Random {
 public:
  Random(std::uint64_t seed, std::uint64_t run) : engine_(seed * 1'000'003 + run) {}

  double Between(double least, double most) {
    return least + (most - least) * static_cast<double>(engine_() >> 11) * 0x1p-53;
  }
  // As likely in one octave as in another.
  double BetweenRatios(double least, double most) { return least * std::pow(most / least, Between(0.0, 1.0)); }
  bool Chance(double probability) { return Between(0.0, 1.0) < probability; }
  double Sign() { return Chance(0.5) ? 1.0 : -1.0; }
  double OneOf(std::initializer_list<double> values) { return values.begin()[engine_() % values.size()]; }
  int Whole(int least, int most) {
    return least + static_cast<int>(engine_() % static_cast<unsigned>(most - least + 1));
  }
  double Gaussian() {
    double sum = -6.0;
    for (int i = 0; i < 12; ++i) sum += Between(0.0, 1.0);
    return sum;
  }

 private:
  std::mt19937_64 engine_;
};

}  // namespace measure_verdict
