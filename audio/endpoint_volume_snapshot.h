#pragma once

#include <vector>

#include "audio/audio_endpoint.h"

namespace audio {

// Saves an endpoint's mute state and channel levels, sets others, and restores the saved ones when it is told to; the
// destructor restores nothing. Each operation throws kPlatformError when a platform call fails. Channels that were set
// before that stay set, and what was saved stays saved.
class EndpointVolumeSnapshotClass {
 public:
  // Doesn't own `endpoint`, which must outlive the snapshot. A stream assigned to it meanwhile is what is saved and set
  // from then on. Throws kNoEndpointGiven for a null pointer.
  explicit EndpointVolumeSnapshotClass(AudioEndpointClass* endpoint);

  void SaveMute();
  void SetMute(bool muted);
  // To be called once: a second call would append to the saved levels.
  void SaveLevels();
  // Sets every channel to `level`, limited to 0.0 to 1.0.
  void SetAllLevels(float level);
  void RestoreMute();
  // Leaves channels alone that the endpoint didn't have when its levels were saved.
  void RestoreLevels();

 private:
  AudioEndpointClass* endpoint_;
  bool savedMute_ = false;
  std::vector<float> savedLevels_;
};

}  // namespace audio
