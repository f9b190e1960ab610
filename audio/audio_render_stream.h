#pragma once

#include <cstdint>
#include <string>

#include "audio/audio_stream.h"
#include "audio/format_block.h"

namespace audio {

// Plays one buffer of samples, which is filled before the start. The order of calls: SetBufferDuration, Initialize,
// GetBuffer, ReleaseBuffer, Start, GetCurrentPadding until it returns 0, Stop.
class AudioRenderStreamClass : public AudioStreamClass {
 public:
  // Binds the default render endpoint.
  AudioRenderStreamClass();
  // Binds the render endpoint that `name` selects, as AudioEndpointClass does.
  explicit AudioRenderStreamClass(std::u16string name);

  AudioRenderStreamClass& operator=(AudioRenderStreamClass&& other) = default;

  // Sets the stream up in `format`; the platform converts to the format that the endpoint runs at. Throws kNotSetUp,
  // without any platform call, before SetBufferDuration.
  void Initialize(const RenderFormatBlock& format);

  // The format given to Initialize.
  const RenderFormatBlock& GetFormat() const { return format_; }

  struct Buffer {
    std::uint8_t* data;    // owned by the platform, valid until ReleaseBuffer
    std::uint32_t frames;  // its size
  };
  // The stream's whole buffer, for the caller to fill. Throws kPlatformError if something is queued in it.
  Buffer GetBuffer();
  // Queues the first `frames` frames of the buffer.
  void ReleaseBuffer(std::uint32_t frames);

 private:
  RenderFormatBlock format_;
  std::uint32_t bufferFrames_ = 0;
};

}  // namespace audio
