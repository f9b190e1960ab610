#include "audio/endpoint_volume_snapshot.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "audio/outcome_codes.h"

namespace audio {

EndpointVolumeSnapshotClass::EndpointVolumeSnapshotClass(AudioEndpointClass* endpoint) : endpoint_(endpoint) {
  if (endpoint_ == nullptr) throw kNoEndpointGiven;
}

void EndpointVolumeSnapshotClass::SaveMute() { savedMute_ = endpoint_->GetMute(); }

void EndpointVolumeSnapshotClass::SetMute(bool muted) { endpoint_->SetMute(muted); }

void EndpointVolumeSnapshotClass::SaveLevels() {
  const std::uint32_t count = endpoint_->GetChannelCount();
  std::vector<float> levels;
  for (std::uint32_t channel = 0; channel < count; ++channel) levels.push_back(endpoint_->GetChannelLevel(channel));
  savedLevels_.insert(savedLevels_.end(), levels.begin(), levels.end());
}

void EndpointVolumeSnapshotClass::SetAllLevels(float level) {
  const std::uint32_t count = endpoint_->GetChannelCount();
  const float limited = std::max(0.0F, std::min(1.0F, level));
  for (std::uint32_t channel = 0; channel < count; ++channel) endpoint_->SetChannelLevel(channel, limited);
}

void EndpointVolumeSnapshotClass::RestoreMute() { endpoint_->SetMute(savedMute_); }

void EndpointVolumeSnapshotClass::RestoreLevels() {
  const std::size_t count = std::min<std::size_t>(endpoint_->GetChannelCount(), savedLevels_.size());
  for (std::size_t channel = 0; channel < count; ++channel) {
    endpoint_->SetChannelLevel(static_cast<std::uint32_t>(channel), savedLevels_[channel]);
  }
}

}  // namespace audio
