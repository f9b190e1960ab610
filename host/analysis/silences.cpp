#include "host/analysis/silences.h"

#include <algorithm>
#include <complex>

namespace host {
namespace {

constexpr double kLongestSilenceSeconds = 0.025;
// Half of the window through which the baseband sees the sound: so far from a gap nothing is seen of it.
constexpr double kBesideSeconds = 0.003;
// Of the power beside it. Through that window a gap of 3 ms leaves about as much.
constexpr double kPowerInSilence = 0.02;
// How much of one side must go on in the phase of the other, as a cosine.
constexpr double kAlike = 0.5;

}  // namespace

std::vector<std::pair<std::size_t, std::size_t>> FindSilences(const Baseband& baseband, std::size_t first,
                                                              std::size_t last, double least) {
  const auto beside = static_cast<std::size_t>(kBesideSeconds / baseband.SecondsPerValue());
  const auto longest = static_cast<std::size_t>(kLongestSilenceSeconds / baseband.SecondsPerValue());
  const auto& values = baseband.values;
  std::vector<std::pair<std::size_t, std::size_t>> silences;
  for (std::size_t m = std::max(first, beside); m < last; ++m) {
    const std::complex<double> before = values[m - beside];
    const double silent = kPowerInSilence * std::norm(before);
    if (std::norm(before) < least || std::norm(values[m]) > silent) continue;
    std::size_t end = m + 1;
    while (end < last && std::norm(values[end]) <= silent) ++end;
    if (end - m > longest || end + beside > values.size()) continue;
    const std::complex<double> after = values[end - 1 + beside];
    const double product = (std::conj(before) * after).real();
    if (std::norm(after) < least || product < kAlike * std::abs(before) * std::abs(after)) continue;
    silences.emplace_back(m, end);
    m = end;
  }
  return silences;
}

}  // namespace host
