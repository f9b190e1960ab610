#include "platform/virtual/machine_endpoint.h"

namespace virtual_audio {

HRESULT MachineEndpoint::TakesFormat(const std::optional<SampleFormat>& wanted) const {
  if (takesEveryPcm) return wanted && !wanted->isFloat ? S_OK : AUDCLNT_E_UNSUPPORTED_FORMAT;
  if (!closest) return AUDCLNT_E_UNSUPPORTED_FORMAT;
  return wanted == closest ? S_OK : S_FALSE;
}

double MachineEndpoint::Gain(std::size_t channel) const {
  if (muted) return 0.0;
  double gain = channel < levels.size() ? levels[channel] : 1.0;
  for (const PathCondition& condition : path) {
    if (condition.channel != static_cast<double>(channel)) continue;
    if (condition.kind == PathCondition::Kind::kDead) gain = 0.0;
    if (condition.kind == PathCondition::Kind::kInverted) gain = -gain;
  }
  return gain;
}

std::vector<double> MachineEndpoint::RecordGains(WORD channels) const {
  if (format.channels == 1) return std::vector<double>(channels, Gain(0));
  std::vector<double> gains(channels, 0.0);
  for (std::size_t channel = 0; channel < format.channels; ++channel) {
    if (channels == 1) {
      gains[0] += Gain(channel) / format.channels;
    } else if (channel < channels) {
      gains[channel] = Gain(channel);
    }
  }
  return gains;
}

std::vector<double> MachineEndpoint::PlayGains(WORD channels) const {
  std::vector<double> gains = RecordGains(channels);
  if (channels == 1) return gains;
  for (double& gain : gains) gain /= format.channels == 1 ? channels : format.channels;
  return gains;
}

}  // namespace virtual_audio
