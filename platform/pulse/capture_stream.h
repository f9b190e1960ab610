#pragma once

#include "platform/packet_queue.h"
#include "platform/pulse/stream.h"

namespace pulse_audio {

// A capture stream: libpulse's thread puts what comes into packets of 10 ms. A packet that the buffer has no room for
// is lost.
class CaptureStream final : public Stream {
 public:
  CaptureStream(std::shared_ptr<Connection> connection, const platform::SampleFormat& format, UINT32 bufferFrames)
      : Stream(std::move(connection), format, bufferFrames), packets_(bufferFrames) {}
  // What comes in is put where this class ends before its base.
  ~CaptureStream() override { Close(); }

  HRESULT Padding(UINT32* frames) override;
  // Waits until sound comes in, for a while.
  HRESULT Start() override;
  platform::PacketQueue& Packets() { return packets_; }

 private:
  int Connect(const Endpoint& endpoint) override;

  // On libpulse's thread.
  void TakeAll() noexcept;
  void Take(const BYTE* bytes, std::size_t count);
  void EndPacket(UINT32 frames);
  UINT32 PacketFrames() const;

  platform::PacketQueue packets_;
  std::size_t toSkip_ = 0;   // bytes before the first that counts
  std::vector<BYTE> begun_;  // the packet in progress
  std::int64_t begunTime_ = 0;
  std::int64_t packet_ = 0;  // its number
  bool hasLost_ = false;     // packets, since the last one that was kept
};

}  // namespace pulse_audio
