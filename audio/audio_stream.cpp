#include "audio/audio_stream.h"

#include "audio/platform_call.h"

namespace audio {

void AudioStreamClass::SetBufferDuration(std::int64_t duration) {
  bufferDuration_ = duration;
  bufferDurationSet_ = true;
}

void AudioStreamClass::Start() { Require(client_->Start()); }

void AudioStreamClass::Stop() { Require(client_->Stop()); }

std::uint32_t AudioStreamClass::GetCurrentPadding() const {
  UINT32 frames = 0;
  Require(client_->GetCurrentPadding(&frames));
  return frames;
}

void AudioStreamClass::RequireBufferDuration() const {
  if (!bufferDurationSet_) throw kNotSetUp;
}

void AudioStreamClass::InitializeClient(DWORD flags, const WAVEFORMATEX& format) {
  Require(client_->Initialize(AUDCLNT_SHAREMODE_SHARED, flags, bufferDuration_, 0, &format, nullptr));
}

}  // namespace audio
