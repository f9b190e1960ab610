#pragma once

#include <span>
#include <vector>

#include "platform/core_audio.h"

namespace platform {

// The area that a render stream hands out for the next frames. The statuses are those that IAudioRenderClient
// publishes.
class RenderArea {
 public:
  RenderArea(UINT32 frameBytes, BYTE silentByte) : frameBytes_(frameBytes), silentByte_(silentByte) {}

  // `room` is how many frames the stream's buffer can take now.
  HRESULT GetBuffer(UINT32 frames, UINT32 room, BYTE** data);
  // On success `filled` is what the stream is to queue; it holds until the next GetBuffer.
  HRESULT ReleaseBuffer(UINT32 frames, DWORD flags, std::span<const BYTE>* filled);

 private:
  const UINT32 frameBytes_;
  const BYTE silentByte_;
  std::vector<BYTE> bytes_;
  UINT32 frames_ = 0;  // handed out
};

}  // namespace platform
