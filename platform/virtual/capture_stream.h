#pragma once

#include <cstdint>
#include <functional>
#include <random>
#include <span>
#include <vector>

#include "platform/core_audio.h"
#include "platform/packet_queue.h"
#include "platform/virtual/clock.h"
#include "platform/virtual/render_stream.h"
#include "platform/virtual/stream.h"

namespace virtual_audio {

// The sound of one capture stream: frames taken from Start to Stop, waiting in packets of 10 ms. A packet that begins
// while the buffer has no room for it is lost.
class CaptureStream final : public Stream {
 public:
  // Puts what the endpoint hears at the grid's frames into the span, a sample per frame; the span holds silence before.
  using Listen = std::function<void(std::span<double> mix, const FrameGrid& grid)>;

  CaptureStream(const SampleFormat& format, UINT32 bufferFrames, std::uint64_t seed)
      : Stream(format, bufferFrames), random_(seed), packets_(bufferFrames) {}

  UINT32 Padding() const override { return packets_.NextFrames(); }
  void Start(Time now) override;

  platform::PacketQueue& Packets() { return packets_; }

  // Takes the frames that are due at `now`: on every channel what is heard, times the channel's gain, plus noise of the
  // given peak.
  void Record(Time now, std::span<const double> gains, double noise, const Listen& listen);

 private:
  std::int64_t PacketStart(std::int64_t packet) const { return packet * format_.rate / 100; }
  void Take(std::size_t frames, std::span<const double> gains, double noise, const Listen& listen);

  std::mt19937_64 random_;
  Time start_ = 0;               // of the last Start
  std::int64_t startFrame_ = 0;  // the frame that was next then
  std::int64_t next_ = 0;        // the next frame to take
  std::int64_t packet_ = 0;      // the packet that it belongs to
  bool hasLost_ = false;         // packets, since the last one that was kept
  platform::PacketQueue packets_;
  std::vector<BYTE> begun_;  // the packet in progress
  Time begunTime_ = 0;
  std::vector<double> mix_;
};

}  // namespace virtual_audio
