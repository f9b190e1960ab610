#pragma once

#include <vector>

#include "audio/audio_endpoint.h"

namespace audio {

// Saves an endpoint's mute state and channel levels, sets others, and puts the saved ones back. Nothing is put back
// unless it is asked for. Each operation throws kPlatformError when a platform call fails: channels already set then
// stay set, and what was saved stays saved.
class EndpointVolumeSnapshotClass {
 public:
  // Follows `endpoint`, which is not owned and outlives the snapshot. Throws kNoEndpointGiven for a null pointer.
  explicit EndpointVolumeSnapshotClass(AudioEndpointClass* endpoint);

  void SaveMute();
  void SetMute(bool muted);
  // Called once: a second call would append.
  void SaveLevels();
  // Sets every channel to `level`, limited to 0.0 to 1.0.
  void SetAllLevels(float level);
  void RestoreMute();
  // Channels that the endpoint didn't have when its levels were saved are left alone.
  void RestoreLevels();

 private:
  AudioEndpointClass* endpoint_;
  bool savedMute_ = false;
  std::vector<float> savedLevels_;
};

}  // namespace audio
