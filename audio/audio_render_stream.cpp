#include "audio/audio_render_stream.h"

#include <utility>

#include "audio/platform_call.h"

namespace audio {

AudioRenderStreamClass::AudioRenderStreamClass() : AudioStreamClass(eRender) {}

AudioRenderStreamClass::AudioRenderStreamClass(std::u16string name) : AudioStreamClass(eRender, std::move(name)) {}

void AudioRenderStreamClass::Initialize(const RenderFormatBlock& format) {
  RequireBufferDuration();
  InitializeClient(AUDCLNT_STREAMFLAGS_AUTOCONVERTPCM | AUDCLNT_STREAMFLAGS_SRC_DEFAULT_QUALITY, format.header);
  format_ = format;

  UINT32 frames = 0;
  Require(client_->GetBufferSize(&frames));
  bufferFrames_ = frames;
  renderClient_ = RequireInterface<IAudioRenderClient>(
      [this](REFIID interfaceId, void** service) { return client_->GetService(interfaceId, service); });
}

AudioRenderStreamClass::Buffer AudioRenderStreamClass::GetBuffer() {
  BYTE* data = nullptr;
  Require(renderClient_->GetBuffer(bufferFrames_, &data), data);
  return {data, bufferFrames_};
}

void AudioRenderStreamClass::ReleaseBuffer(std::uint32_t frames) { Require(renderClient_->ReleaseBuffer(frames, 0)); }

}  // namespace audio
