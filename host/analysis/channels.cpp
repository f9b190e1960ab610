#include "host/analysis/channels.h"

#include <algorithm>
#include <cmath>

#include "host/analysis/level.h"

namespace host {

std::size_t ReferenceChannel(const std::vector<ChannelFindings>& channels) {
  const auto worse = [](const ChannelFindings& one, const ChannelFindings& other) {
    if (one.tone.heard != other.tone.heard) return other.tone.heard;
    return one.tone.heard ? one.tone.rms < other.tone.rms : one.level.rms < other.level.rms;
  };
  return static_cast<std::size_t>(std::max_element(channels.begin(), channels.end(), worse) - channels.begin());
}

void CompareChannels(const ToneSearch& reference, const ToneSearch& search, ChannelFindings& channel) {
  if (!reference.heard) return;
  if (!search.heard) {
    channel.relativeLevelDb = kSilenceDb;
    return;
  }
  std::complex<double> product = 0.0;
  for (std::size_t k = 0; k < kPartials; ++k) {
    product += std::conj(reference.tone.partials[k]) * search.tone.partials[k];
  }
  const double powers = 4.0 * reference.tone.Power() * search.tone.Power();
  channel.correlation = std::clamp(product.real() / std::sqrt(powers + 1e-300), -1.0, 1.0);
  channel.relativeLevelDb = PowerDb(search.tone.Power() / std::max(reference.tone.Power(), 1e-300));
}

}  // namespace host
