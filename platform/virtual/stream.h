#pragma once

#include "platform/core_audio.h"
#include "platform/sample_format.h"
#include "platform/virtual/clock.h"

namespace virtual_audio {

using platform::SampleFormat;

// What the streams of both directions have in common.
class Stream {
 public:
  Stream(const SampleFormat& format, UINT32 bufferFrames) : format_(format), bufferFrames_(bufferFrames) {}
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;
  virtual ~Stream() = default;

  const SampleFormat& Format() const { return format_; }
  UINT32 BufferFrames() const { return bufferFrames_; }
  bool IsRunning() const { return isRunning_; }

  // Render: frames queued and not yet played. Capture: frames of the next packet, 0 when there is none.
  virtual UINT32 Padding() const = 0;

  virtual void Start(Time now) = 0;
  virtual void Stop() { isRunning_ = false; }

 protected:
  const SampleFormat format_;
  const UINT32 bufferFrames_;
  bool isRunning_ = false;
};

}  // namespace virtual_audio
