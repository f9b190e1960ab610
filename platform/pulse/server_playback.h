#pragma once

#include <span>

#include "platform/backend.h"
#include "platform/pulse/server_stream.h"

namespace pulse_audio {

// A render stream: the server has the queue, and says how much of it is left. One that stands still while it should play
// fails with AUDCLNT_E_RESOURCES_INVALIDATED.
class ServerPlayback final : public platform::Playback {
 public:
  // What either kind of server queues for a stream, in bytes.
  static constexpr std::uint32_t kLargestBuffer = 4 * 1024 * 1024;

  ServerPlayback(Connection& connection, const platform::SampleFormat& format)
      : connection_(connection), stream_(connection, format) {}

  // Sets the stream up, and waits until what is queued goes out soon.
  HRESULT Open(const ServerEndpoint& endpoint, UINT32 bufferFrames);

  HRESULT Start() override;
  HRESULT Stop() override;
  HRESULT Padding(UINT32* frames) override;
  HRESULT Write(std::span<const BYTE> frames) override;

 private:
  HRESULT Settle();

  Connection& connection_;
  UINT32 lastPadding_ = 0;
  pa_usec_t lastProgress_ = 0;  // when the padding was seen to fall, or what it counts changed
  ServerStream stream_;
};

}  // namespace pulse_audio
