#pragma once

#include <cstdint>
#include <string>

#include "platform/com_ptr.h"
#include "platform/core_audio.h"

namespace audio {

// One bound audio endpoint, with the platform references through which everything else reaches it. The constructor
// binds it until it is destroyed or overwritten. Used on one thread, which has been put on a platform.
//
// Every operation throws kPlatformError when a platform call fails. Levels are scalars from 0.0 to 1.0.
class AudioEndpointClass {
 public:
  // Binds the default endpoint of `flow` for the console role.
  explicit AudioEndpointClass(EDataFlow flow);

  // Binds the first active endpoint of `flow`, in the platform's order, whose whole id occurs somewhere in `name`:
  // hosts send ids with a prefix of their own. Both are compared in lower case. Throws kEndpointNotFound if there is
  // none.
  AudioEndpointClass(EDataFlow flow, std::u16string name);

  // Releases the references held so far and takes over those of `other`, which is left bound to nothing: it can only be
  // destroyed or assigned to.
  AudioEndpointClass& operator=(AudioEndpointClass&& other) = default;

  std::uint32_t GetChannelCount() const;
  float GetChannelLevel(std::uint32_t channel) const;
  void SetChannelLevel(std::uint32_t channel, float level);
  bool GetMute() const;
  // Reads the state first, and writes it only if it differs.
  void SetMute(bool muted);

 protected:
  static ComPtr<IMMDeviceEnumerator> CreateEnumerator();

  // Released in the reverse of this order.
  ComPtr<IMMDevice> device_;
  ComPtr<IMMDeviceEnumerator> enumerator_;
  ComPtr<IAudioClient> client_;
  ComPtr<IAudioEndpointVolume> volume_;

 private:
  void ActivateInterfaces();
};

}  // namespace audio
