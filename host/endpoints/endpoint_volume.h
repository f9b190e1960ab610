#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/endpoints/endpoints.h"
#include "platform/com_ptr.h"
#include "platform/core_audio.h"

namespace host {

// The mute state and the channel levels of one endpoint. The thread must stay on the platform.
class EndpointVolume {
 public:
  explicit EndpointVolume(IMMDevice& device);

  // The volume of the active endpoint of `flow` with exactly this id; nothing when there is none.
  static std::optional<EndpointVolume> Of(Flow flow, const std::string& id);

  // Nothing when the system doesn't tell.
  std::optional<bool> Muted() const;
  // Scalars, one a channel. Nothing when there is no channel, or the system doesn't tell all of them.
  std::optional<std::vector<float>> Levels() const;

  // Whether the system took it.
  bool SetMuted(bool muted) const;
  bool SetLevels(const std::vector<float>& levels) const;

 private:
  ComPtr<IAudioEndpointVolume> volume_;  // may be null: some endpoints have none
};

}  // namespace host
