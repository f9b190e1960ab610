#include "host/analysis/tone_fit.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace host {
namespace {

using Complex = std::complex<double>;

constexpr double kSeedSeconds = 0.25;
constexpr double kSeedHopSeconds = 0.05;
constexpr double kBlockSeconds = 0.05;
// A block counts by the logarithm of the share of its energy that the fit leaves: half of the blocks fitted well are worth
// more than all of them fitted somehow. To leave less than this is no better.
constexpr double kLeastUnexplained = 1e-3;

// The normal equations of least squares with N unknowns, summed up row by row.
template <std::size_t N>
class NormalEquations {
 public:
  void Add(const std::array<Complex, N>& row, Complex value, double weight) {
    for (std::size_t i = 0; i < N; ++i) {
      const Complex conjugate = weight * std::conj(row[i]);
      for (std::size_t j = i; j < N; ++j) matrix_[i][j] += conjugate * row[j];
      values_[i] += conjugate * value;
    }
  }

  // By Cholesky's decomposition. A little is added to the diagonal, so that there is an answer for any sum of rows.
  std::array<Complex, N> Solve() const {
    auto lower = matrix_;
    auto answer = values_;
    double trace = 1e-300;
    for (std::size_t i = 0; i < N; ++i) trace += matrix_[i][i].real();
    for (std::size_t i = 0; i < N; ++i) {
      for (std::size_t j = 0; j <= i; ++j) {
        Complex sum = std::conj(matrix_[j][i]);
        for (std::size_t k = 0; k < j; ++k) sum -= lower[i][k] * std::conj(lower[j][k]);
        if (i == j) {
          lower[i][i] = std::sqrt(std::max(sum.real(), 0.0) + 1e-12 * trace);
        } else {
          lower[i][j] = sum / lower[j][j];
        }
      }
    }
    for (std::size_t i = 0; i < N; ++i) {
      for (std::size_t k = 0; k < i; ++k) answer[i] -= lower[i][k] * answer[k];
      answer[i] /= lower[i][i];
    }
    for (std::size_t i = N; i-- > 0;) {
      for (std::size_t k = i + 1; k < N; ++k) answer[i] -= std::conj(lower[k][i]) * answer[k];
      answer[i] /= lower[i][i];
    }
    return answer;
  }

 private:
  std::array<std::array<Complex, N>, N> matrix_{};
  std::array<Complex, N> values_{};
};

// The partials at a time, each with amplitude 1 and phase 0 at time 0.
std::array<Complex, kPartials> RowAt(double seconds) {
  const Complex step = Phasor(kPartialStepHz * seconds);
  std::array<Complex, kPartials> row;
  row[0] = Phasor(PartialOffsetHz(0) * seconds);
  for (std::size_t k = 1; k < kPartials; ++k) row[k] = row[k - 1] * step;
  return row;
}

// The rows at the times of a baseband, one after the other.
class Rows {
 public:
  explicit Rows(const Baseband& baseband, std::size_t first = 0)
      : row_(RowAt(baseband.Seconds(first))), turn_(RowAt(baseband.SecondsPerValue())) {}

  std::array<Complex, kPartials> Next() {
    const auto row = row_;
    for (std::size_t k = 0; k < kPartials; ++k) row_[k] *= turn_[k];
    return row;
  }

 private:
  std::array<Complex, kPartials> row_;
  std::array<Complex, kPartials> turn_;
};

struct BlockFit {
  double explained;  // energy that the fit explains with a gain of the block's own
  double energy;
};

BlockFit CompareBlock(const Baseband& baseband, std::span<const Complex> envelope, std::size_t first,
                      std::size_t last) {
  double energy = 0.0;
  double fitted = 1e-300;
  double product = 0.0;
  for (std::size_t m = first; m < last; ++m) {
    energy += std::norm(baseband.values[m]);
    fitted += std::norm(envelope[m]);
    product += (std::conj(envelope[m]) * baseband.values[m]).real();
  }
  return {product > 0.0 ? product * product / fitted : 0.0, energy};
}

struct PatternMatched {
  double beginSeconds;
  double power;
};

// The begin for which the partials add up best when the signs and phases that the generator gave them are taken away.
PatternMatched MatchPattern(const std::array<Complex, kPartials>& partials) {
  constexpr int kSteps = 2000;
  PatternMatched best{0.0, -1.0};
  for (int i = 0; i < kSteps; ++i) {
    const double seconds = kEnvelopeSeconds * i / kSteps;
    const std::array<Complex, kPartials> row = RowAt(seconds);
    Complex sum = 0.0;
    for (std::size_t k = 0; k < kPartials; ++k) sum += (k % 2 == 1 ? 1.0 : -1.0) * partials[k] * row[k];
    if (std::norm(sum) > best.power) best = {seconds, std::norm(sum)};
  }
  return best;
}

std::size_t ValuesIn(const Baseband& baseband, double seconds) {
  return std::max<std::size_t>(1, static_cast<std::size_t>(seconds / baseband.SecondsPerValue()));
}

}  // namespace

std::vector<Complex> FittedTone::Envelope(const Baseband& baseband, double delaySeconds) const {
  std::array<Complex, kPartials> turned = RowAt(-delaySeconds);
  const Complex carrier = Phasor(-std::fmod(kToneHz * delaySeconds, 1.0));
  for (std::size_t k = 0; k < kPartials; ++k) turned[k] *= carrier * partials[k];
  std::vector<Complex> envelope;
  envelope.reserve(baseband.values.size());
  Rows rows(baseband);
  for (std::size_t m = 0; m < baseband.values.size(); ++m) {
    const auto row = rows.Next();
    envelope.push_back(std::inner_product(row.begin(), row.end(), turned.begin(), Complex()));
  }
  return envelope;
}

double FittedTone::BeginSeconds() const { return MatchPattern(partials).beginSeconds; }

double FittedTone::PatternMatch() const {
  return MatchPattern(partials).power / (2.0 * static_cast<double>(kPartials) * Power() + 1e-300);
}

double FittedTone::EffectivePartials() const {
  double squares = 1e-300;
  for (const Complex& partial : partials) squares += 0.25 * std::norm(partial) * std::norm(partial);
  return Power() * Power() / squares;
}

double FittedTone::Power() const {
  double power = 0.0;
  for (const Complex& partial : partials) power += 0.5 * std::norm(partial);
  return power;
}

FittedTone FitTone(const FitInput& input) {
  NormalEquations<kPartials> equations;
  const auto isWeight = [](double weight) { return weight > 0.0; };
  const auto begin = std::find_if(input.weights.begin(), input.weights.end(), isWeight);
  const auto first = static_cast<std::size_t>(begin - input.weights.begin());
  Rows rows(input.baseband, first);
  for (std::size_t m = first; m < input.weights.size(); ++m) {
    auto row = rows.Next();
    if (input.weights[m] == 0.0) continue;
    for (Complex& element : row) element *= input.gains[m];
    equations.Add(row, input.baseband.values[m], input.weights[m]);
  }
  return {equations.Solve()};
}

double SpeedCorrection(const FitInput& input, const FittedTone& tone) {
  NormalEquations<kPartials + 1> equations;
  Rows rows(input.baseband);
  for (std::size_t m = 0; m < input.weights.size(); ++m) {
    const auto row = rows.Next();
    if (input.weights[m] == 0.0) continue;
    const double seconds = input.baseband.Seconds(m);
    std::array<Complex, kPartials + 1> withSpeed{};
    Complex fitted = 0.0;
    for (std::size_t k = 0; k < kPartials; ++k) {
      withSpeed[k] = input.gains[m] * row[k];
      const Complex partial = tone.partials[k] * withSpeed[k];
      fitted += partial;
      withSpeed[kPartials] += partial * Complex(0.0, seconds * (1.0 + PartialOffsetHz(k) / kToneHz));
    }
    equations.Add(withSpeed, input.baseband.values[m] - fitted, input.weights[m]);
  }
  // The unknown is the carrier's angular frequency, of whose rows the sum is about as large as those of the others. Its
  // imaginary part is a level that rises or falls.
  return equations.Solve()[kPartials].real() / (2.0 * std::numbers::pi * kToneHz);
}

ToneConsensus FindConsensus(const Baseband& baseband) {
  const std::size_t count = baseband.values.size();
  const std::size_t seed = std::min(count, ValuesIn(baseband, kSeedSeconds));
  const std::size_t block = ValuesIn(baseband, kBlockSeconds);
  const std::vector<double> ones(count, 1.0);
  ToneConsensus best;
  for (std::size_t begin = 0; begin + seed <= count; begin += ValuesIn(baseband, kSeedHopSeconds)) {
    // Zeros up to the stretch, and nothing after it.
    std::vector<double> weights(begin);
    weights.resize(begin + seed, 1.0);
    const FittedTone tone = FitTone({baseband, weights, ones});
    const std::vector<Complex> envelope = tone.Envelope(baseband);
    double explained = 0.0;
    for (std::size_t first = 0; first < count; first += block) {
      const BlockFit fit = CompareBlock(baseband, envelope, first, std::min(count, first + block));
      explained -= fit.energy * std::log(1.0 - fit.explained / (fit.energy + 1e-300) + kLeastUnexplained);
    }
    if (begin > 0 && explained <= best.explained) continue;
    const BlockFit own = CompareBlock(baseband, envelope, begin, begin + seed);
    best = {tone, explained, 1.0 - own.explained / (own.energy + 1e-300)};
  }
  return best;
}

std::vector<double> ExplainedBlocks(const Baseband& baseband, const FittedTone& tone, double unexplainedShare) {
  const std::size_t count = baseband.values.size();
  const std::size_t block = ValuesIn(baseband, kBlockSeconds);
  const std::vector<Complex> envelope = tone.Envelope(baseband);
  std::vector<double> weights(count);
  bool any = false;
  for (std::size_t first = 0; first < count; first += block) {
    const std::size_t last = std::min(count, first + block);
    const BlockFit fit = CompareBlock(baseband, envelope, first, last);
    if (fit.explained <= (1.0 - unexplainedShare) * fit.energy) continue;
    any = true;
    std::fill(weights.begin() + static_cast<std::ptrdiff_t>(first), weights.begin() + static_cast<std::ptrdiff_t>(last),
              1.0);
  }
  if (!any) std::fill(weights.begin(), weights.end(), 1.0);
  return weights;
}

}  // namespace host
