#pragma once

#include <cstdint>
#include <string>

#include "audio/audio_stream.h"

namespace audio {

// Plays one buffer of samples, filled before the start:
// SetBufferDuration, Initialize, GetBuffer, ReleaseBuffer, Start, GetCurrentPadding until it is 0, Stop.
class AudioRenderStreamClass : public AudioStreamClass {
 public:
  // Binds the default render endpoint.
  AudioRenderStreamClass();
  // Binds the render endpoint that `name` selects, as AudioEndpointClass does.
  explicit AudioRenderStreamClass(std::u16string name);

  AudioRenderStreamClass& operator=(AudioRenderStreamClass&& other) = default;

  // Sets the stream up in `format`, which the platform converts to whatever the endpoint runs at. Throws kNotSetUp,
  // with no platform call made, before SetBufferDuration.
  void Initialize(const RenderFormatBlock& format);

  // The format given to Initialize.
  const RenderFormatBlock& GetFormat() const { return format_; }

  struct Buffer {
    std::uint8_t* data;    // the platform's, until ReleaseBuffer
    std::uint32_t frames;  // its size
  };
  // The stream's whole buffer, to be written to. It is free before anything is queued.
  Buffer GetBuffer();
  // Queues the first `frames` frames of the buffer.
  void ReleaseBuffer(std::uint32_t frames);

 private:
  RenderFormatBlock format_;
  std::uint32_t bufferFrames_ = 0;
};

}  // namespace audio
