#pragma once

#include <cstdint>

#include "audio/audio_endpoint.h"

namespace audio {

// A bound endpoint with a shared-mode stream on it, without events or callbacks: what the two directions share. Each
// operation throws kPlatformError when a platform call fails.
class AudioStreamClass : public AudioEndpointClass {
 public:
  using AudioEndpointClass::AudioEndpointClass;

  // Sets the buffer duration to ask for, in units of 100 ns. A stream can't be initialised without.
  void SetBufferDuration(std::int64_t duration);

  void Start();
  void Stop();
  // The number of frames that are queued in the buffer and not yet played.
  std::uint32_t GetCurrentPadding() const;

 protected:
  // Throws kNotSetUp if SetBufferDuration hasn't been called.
  void RequireBufferDuration() const;

  // Sets the stream up with the buffer duration, in the format that begins with `format`.
  void InitializeClient(DWORD flags, const WAVEFORMATEX& format);

  // The service of the stream's direction; the other stays null.
  ComPtr<IAudioRenderClient> renderClient_;
  ComPtr<IAudioCaptureClient> captureClient_;

 private:
  std::int64_t bufferDuration_ = 0;
  bool bufferDurationSet_ = false;
};

}  // namespace audio
