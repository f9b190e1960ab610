#pragma once

#include <cstddef>
#include <memory>
#include <utility>

#include "platform/backend.h"
#include "platform/front/packet_queue.h"
#include "platform/pulse/server_stream.h"

namespace pulse_audio {

// A capture stream: libpulse's thread puts what comes into the packet queue.
class ServerRecording final : public platform::Recording {
 public:
  ServerRecording(Connection& connection, const platform::SampleFormat& format,
                  std::shared_ptr<platform::PacketQueue> packets)
      : connection_(connection), packets_(std::move(packets)), stream_(connection, format) {}

  HRESULT Open(const ServerEndpoint& endpoint);

  // Waits until sound comes in, for a while.
  HRESULT Start() override;
  HRESULT Stop() override;
  HRESULT Status() override { return stream_.Status(); }

 private:
  // On libpulse's thread.
  void TakeAll() noexcept;
  void Take(const BYTE* bytes, std::size_t count);

  Connection& connection_;
  const std::shared_ptr<platform::PacketQueue> packets_;
  std::size_t toSkip_ = 0;  // bytes before the first that counts
  // The last member, because it ends the callbacks, which use the others.
  ServerStream stream_;
};

}  // namespace pulse_audio
