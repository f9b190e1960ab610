#pragma once

#include <cstdint>
#include <string>

#include "platform/com_ptr.h"
#include "platform/core_audio.h"

namespace audio {

// One bound audio endpoint, with the platform references through which everything else reaches it. It is bound by its
// constructor, until it is destroyed or overwritten. Used on one thread, which is initialised for the platform.
//
// Every operation that calls the platform throws kPlatformError when a call fails. Levels are scalars from 0.0 to 1.0.
class AudioEndpointClass {
 public:
  // Binds the default endpoint of `flow` for the console role.
  explicit AudioEndpointClass(EDataFlow flow);

  // Binds the first active endpoint of `flow`, in the platform's order, whose whole id occurs somewhere in `name`. Both
  // are compared in lower case, unit by unit. Throws kEndpointNotFound if there is none.
  AudioEndpointClass(EDataFlow flow, std::u16string name);

  // Takes over the other endpoint's references and releases those held so far. The other is left bound to nothing: it
  // can only be destroyed or assigned to.
  AudioEndpointClass& operator=(AudioEndpointClass&& other) = default;

  std::uint32_t GetChannelCount() const;
  float GetChannelLevel(std::uint32_t channel) const;
  void SetChannelLevel(std::uint32_t channel, float level);
  bool GetMute() const;
  // Reads the state first and writes only a different one.
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
