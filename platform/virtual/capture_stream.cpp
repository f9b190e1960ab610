#include "platform/virtual/capture_stream.h"

#include <algorithm>

namespace virtual_audio {

void CaptureStream::Start(Time now) {
  start_ = now;
  startFrame_ = next_;
  isRunning_ = true;
}

void CaptureStream::Record(Time now, std::span<const double> gains, double noise, const Listen& listen) {
  if (!isRunning_) return;
  const std::int64_t due = startFrame_ + FramesIn(now - start_, format_.rate);
  while (next_ < due) {
    const std::int64_t packetEnd = PacketStart(packet_ + 1);
    const auto packetFrames = static_cast<UINT32>(packetEnd - PacketStart(packet_));
    if (begun_.empty() && !packets_.HasRoomFor(packetFrames)) {
      // Nothing is read in the time that passes here, so all packets that begin in it are lost with this one.
      packet_ = (due * 100 + format_.rate - 1) / format_.rate;
      next_ = PacketStart(packet_);
      hasLost_ = true;
      return;
    }
    Take(static_cast<std::size_t>(std::min(packetEnd, due) - next_), gains, noise, listen);
    if (next_ < packetEnd) return;
    packets_.Push({.bytes = std::move(begun_),
                   .frames = packetFrames,
                   .flags = hasLost_ ? DWORD{AUDCLNT_BUFFERFLAGS_DATA_DISCONTINUITY} : DWORD{0},
                   .position = PacketStart(packet_),
                   .time = begunTime_});
    begun_.clear();
    hasLost_ = false;
    ++packet_;
  }
}

void CaptureStream::Take(std::size_t frames, std::span<const double> gains, double noise, const Listen& listen) {
  mix_.assign(frames, 0.0);
  listen(mix_, {.start = start_, .frame = next_ - startFrame_, .rate = format_.rate});
  const std::size_t taken = begun_.size();
  if (taken == 0) begunTime_ = start_ + TimeOfFrames(next_ - startFrame_, format_.rate);
  begun_.resize(taken + frames * format_.FrameBytes(), format_.SilentByte());
  BYTE* sample = begun_.data() + taken;
  for (const double heard : mix_) {
    if (heard == 0.0 && noise == 0.0) {
      sample += format_.FrameBytes();
      continue;
    }
    for (const double gain : gains) {
      double value = heard * gain;
      // The distributions of the standard library differ between libraries; the engine doesn't.
      if (noise != 0.0) value += noise * (static_cast<double>(random_() >> 11) * 0x1p-52 - 1.0);
      format_.Write(value, sample);
      sample += format_.SampleBytes();
    }
  }
  next_ += static_cast<std::int64_t>(frames);
}

}  // namespace virtual_audio
