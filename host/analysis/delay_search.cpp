#include "host/analysis/delay_search.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace host {
namespace {

using Complex = std::complex<double>;

// A twentieth of the carrier's period. A peak between two such steps is lower by a fortieth at most.
constexpr double kCoarseSeconds = 40e-6;
constexpr double kFineSeconds = 1e-6;
constexpr double kNearlyBest = 0.95;

// The correlation with the tone and the tone's energy over a stretch, both as sums of a few exponentials of the delay.
class DelayedProduct {
 public:
  DelayedProduct(const Baseband& baseband, const FittedTone& tone, std::size_t first, std::size_t last) {
    std::array<Complex, kPartials> lags{};
    for (std::size_t m = first; m < last; ++m) {
      const double seconds = baseband.Seconds(m);
      const Complex step = Phasor(kPartialStepHz * seconds);
      Complex turned = Phasor(PartialOffsetHz(0) * seconds);
      Complex lag = 1.0;
      for (std::size_t k = 0; k < kPartials; ++k) {
        product_[k] += tone.partials[k] * turned * std::conj(baseband.values[m]);
        lags[k] += lag;
        turned *= step;
        lag *= step;
      }
    }
    for (std::size_t lag = 0; lag < kPartials; ++lag) {
      Complex sum = 0.0;
      for (std::size_t k = lag; k < kPartials; ++k) sum += tone.partials[k] * std::conj(tone.partials[k - lag]);
      energy_[lag] = (lag == 0 ? 1.0 : 2.0) * sum * lags[lag];
    }
  }

  // The energies explained with `steps` delays from `from` on.
  std::vector<double> Explained(double from, double step, int steps) const {
    auto product = product_;
    auto energy = energy_;
    std::array<Complex, kPartials> productStep;
    std::array<Complex, kPartials> energyStep;
    for (std::size_t k = 0; k < kPartials; ++k) {
      const double partialHz = kToneHz + PartialOffsetHz(k);
      const double lagHz = kPartialStepHz * static_cast<double>(k);
      product[k] *= Phasor(-partialHz * from);
      energy[k] *= Phasor(-lagHz * from);
      productStep[k] = Phasor(-partialHz * step);
      energyStep[k] = Phasor(-lagHz * step);
    }
    std::vector<double> explained;
    for (int i = 0; i < steps; ++i) {
      double correlation = 0.0;
      double fitted = 0.0;
      for (std::size_t k = 0; k < kPartials; ++k) {
        correlation += product[k].real();
        fitted += energy[k].real();
        product[k] *= productStep[k];
        energy[k] *= energyStep[k];
      }
      const bool alike = correlation > 0.0 && fitted > 1e-9 * std::abs(energy_[0]);
      explained.push_back(alike ? correlation * correlation / fitted : 0.0);
    }
    return explained;
  }

 private:
  std::array<Complex, kPartials> product_{};
  std::array<Complex, kPartials> energy_{};
};

}  // namespace

DelayedFit FindDelay(const Baseband& baseband, const FittedTone& tone, std::size_t first, std::size_t last,
                     double least, double most) {
  const DelayedProduct product(baseband, tone, first, last);
  const auto coarse =
      product.Explained(least, kCoarseSeconds, static_cast<int>(std::lround((most - least) / kCoarseSeconds)));
  const double highest = *std::max_element(coarse.begin(), coarse.end());
  // Neighbouring periods of the carrier are nearly as good, and one of them may lie better on the coarse steps.
  DelayedFit best;
  for (std::size_t i = 1; i + 1 < coarse.size(); ++i) {
    if (coarse[i] < kNearlyBest * highest || coarse[i] < coarse[i - 1] || coarse[i] < coarse[i + 1]) continue;
    const double from = least + kCoarseSeconds * (static_cast<double>(i) - 1.0);
    const auto fine =
        product.Explained(from, kFineSeconds, static_cast<int>(std::lround(2.0 * kCoarseSeconds / kFineSeconds)));
    const auto top = std::max_element(fine.begin(), fine.end());
    if (*top > best.explained) best = {from + kFineSeconds * static_cast<double>(top - fine.begin()), *top};
  }
  return best;
}

}  // namespace host
