#include "platform/pulse/capture_stream.h"

#include <algorithm>

namespace pulse_audio {

namespace {

// How long a source may take to wake up. A microphone may come later than this; then its first sound is lost.
constexpr pa_usec_t kWakeTime = 3 * PA_USEC_PER_SEC / 2;

// A source can begin with what it held back from an earlier stream.
constexpr std::uint32_t kStalePackets = 2;

// What the server sends at a time. With one packet, as long as what a render stream is asked for, PipeWire 0.3.65 was
// seen to stop feeding the second of two capture streams when the render stream started.
constexpr std::uint32_t kFragmentPackets = 2;

}  // namespace

int CaptureStream::Connect(const Endpoint& endpoint) {
  constexpr auto kServersChoice = static_cast<std::uint32_t>(-1);
  const pa_buffer_attr buffer{.maxlength = kServersChoice,
                              .tlength = kServersChoice,
                              .prebuf = kServersChoice,
                              .minreq = kServersChoice,
                              .fragsize = kFragmentPackets * PacketBytes()};
  constexpr auto kFlags = static_cast<pa_stream_flags_t>(PA_STREAM_START_CORKED | PA_STREAM_ADJUST_LATENCY |
                                                         PA_STREAM_DONT_MOVE | PA_STREAM_START_UNMUTED);
  pa_stream_set_read_callback(
      Handle(), [](pa_stream*, std::size_t, void* self) { static_cast<CaptureStream*>(self)->TakeAll(); }, this);
  return pa_stream_connect_record(Handle(), endpoint.serverName.c_str(), &buffer, kFlags);
}

HRESULT CaptureStream::Padding(UINT32* frames) {
  const HRESULT status = Status();
  if (status == S_OK) *frames = packets_.NextFrames();
  return status;
}

HRESULT CaptureStream::Start() {
  begun_.clear();
  toSkip_ = std::size_t{kStalePackets} * PacketBytes();
  HRESULT status = Run(true);
  if (status != S_OK) return status;
  GetConnection().WaitUntil(kWakeTime, [this] { return toSkip_ == 0 || !IsGood(); });
  return Status();
}

void CaptureStream::TakeAll() noexcept {
  const void* bytes = nullptr;
  std::size_t count = 0;
  while (pa_stream_peek(Handle(), &bytes, &count) >= 0 && count > 0) {
    try {
      Take(static_cast<const BYTE*>(bytes), count);
    } catch (...) {
      // There was no memory for these frames.
      hasLost_ = true;
    }
    pa_stream_drop(Handle());
  }
  GetConnection().WakeUp();
}

// Null bytes are silence.
void CaptureStream::Take(const BYTE* bytes, std::size_t count) {
  std::size_t at = std::min(toSkip_, count);
  toSkip_ -= at;
  while (at < count) {
    const UINT32 frames = PacketFrames();
    const std::size_t packetBytes = std::size_t{frames} * format_.FrameBytes();
    if (begun_.empty()) {
      begun_.reserve(packetBytes);
      begunTime_ = static_cast<std::int64_t>(pa_rtclock_now()) * 1000;
    }
    const std::size_t taken = std::min(packetBytes - begun_.size(), count - at);
    if (bytes == nullptr) {
      begun_.resize(begun_.size() + taken, format_.SilentByte());
    } else {
      begun_.insert(begun_.end(), bytes + at, bytes + at + taken);
    }
    at += taken;
    if (begun_.size() == packetBytes) EndPacket(frames);
  }
}

void CaptureStream::EndPacket(UINT32 frames) {
  const std::int64_t position = packet_ * format_.rate / 100;
  ++packet_;
  if (!packets_.HasRoomFor(frames)) {
    begun_.clear();
    hasLost_ = true;
    return;
  }
  packets_.Push({.bytes = std::move(begun_),
                 .frames = frames,
                 .flags = hasLost_ ? DWORD{AUDCLNT_BUFFERFLAGS_DATA_DISCONTINUITY} : DWORD{0},
                 .position = position,
                 .time = begunTime_});
  begun_.clear();
  hasLost_ = false;
}

// A rate that isn't a multiple of 100 Hz has packets that differ by a frame.
UINT32 CaptureStream::PacketFrames() const {
  return static_cast<UINT32>((packet_ + 1) * format_.rate / 100 - packet_ * format_.rate / 100);
}

}  // namespace pulse_audio
