#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "audio/audio_endpoint.h"
#include "audio/format_block.h"

namespace audio {

// A bound endpoint with a shared-mode stream on it, with neither events nor callbacks: what the two directions share.
// Each operation throws kPlatformError when a platform call fails.
class AudioStreamClass : public AudioEndpointClass {
 public:
  using AudioEndpointClass::AudioEndpointClass;

  // The buffer duration to ask for, in units of 100 ns. A stream can't be initialised before it is set.
  void SetBufferDuration(std::int64_t duration);

  void Start();
  void Stop();
  // The frames that are queued in the buffer and not yet played.
  std::uint32_t GetCurrentPadding() const;

 protected:
  // Throws kNotSetUp before SetBufferDuration.
  void RequireBufferDuration() const;

  // Sets the stream up in `format` with the buffer duration.
  void InitializeClient(DWORD flags, const WAVEFORMATEX* format);

  // The block as the platform takes it. The structure is packed and has no alignment of its own.
  template <std::size_t Size>
  static const WAVEFORMATEX* WaveFormat(const FormatBlock<Size>& format) {
    static_assert(Size >= sizeof(WAVEFORMATEX) && alignof(WAVEFORMATEX) == 1);
    return reinterpret_cast<const WAVEFORMATEX*>(format.bytes.data());
  }

  // The service of the stream's direction; the other stays null.
  ComPtr<IAudioRenderClient> renderClient_;
  ComPtr<IAudioCaptureClient> captureClient_;

 private:
  std::int64_t bufferDuration_ = 0;
  bool bufferDurationSet_ = false;
};

}  // namespace audio
