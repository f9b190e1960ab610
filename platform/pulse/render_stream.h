#pragma once

#include "platform/pulse/stream.h"
#include "platform/render_area.h"

namespace pulse_audio {

// A render stream: the server has the queue, and says how much of it is left. One that stands still while it should
// play fails with AUDCLNT_E_RESOURCES_INVALIDATED. The statuses are those that IAudioRenderClient and IAudioClient
// publish.
class RenderStream final : public Stream {
 public:
  // What either kind of server queues for a stream, in bytes.
  static constexpr std::uint32_t kLargestBuffer = 4 * 1024 * 1024;

  RenderStream(std::shared_ptr<Connection> connection, const platform::SampleFormat& format, UINT32 bufferFrames)
      : Stream(std::move(connection), format, bufferFrames), area_(format.FrameBytes(), format.SilentByte()) {}

  HRESULT Padding(UINT32* frames) override;
  HRESULT Start() override;
  HRESULT GetBuffer(UINT32 frames, BYTE** data);
  HRESULT ReleaseBuffer(UINT32 frames, DWORD flags);

 private:
  int Connect(const Endpoint& endpoint) override;
  // Waits until what is queued goes out soon.
  HRESULT Settle() override;

  platform::RenderArea area_;
  UINT32 lastPadding_ = 0;
  pa_usec_t lastProgress_ = 0;  // when the padding was seen to fall, or what it counts changed
};

}  // namespace pulse_audio
