#pragma once

#include <memory>
#include <vector>

#include "platform/backend.h"
#include "platform/core_audio.h"
#include "platform/sample_format.h"

namespace platform {

// The buffer of a render stream: the caller fills an area here, and what it releases goes into the backend's queue. The
// statuses are those that IAudioRenderClient publishes.
class RenderBuffer {
 public:
  RenderBuffer(const SampleFormat& format, UINT32 bufferFrames, std::shared_ptr<Playback> playback);

  HRESULT GetBuffer(UINT32 frames, BYTE** data);
  HRESULT ReleaseBuffer(UINT32 frames, DWORD flags);

 private:
  const UINT32 frameBytes_;
  const BYTE silentByte_;
  const UINT32 bufferFrames_;
  const std::shared_ptr<Playback> playback_;
  std::vector<BYTE> area_;
  UINT32 frames_ = 0;  // handed out
};

}  // namespace platform
