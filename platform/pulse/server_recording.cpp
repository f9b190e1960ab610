#include "platform/pulse/server_recording.h"

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

HRESULT ServerRecording::Open(const ServerEndpoint& endpoint) {
  constexpr auto kServersChoice = static_cast<std::uint32_t>(-1);
  const pa_buffer_attr buffer{.maxlength = kServersChoice,
                              .tlength = kServersChoice,
                              .prebuf = kServersChoice,
                              .minreq = kServersChoice,
                              .fragsize = kFragmentPackets * stream_.PacketBytes()};
  constexpr auto kFlags = static_cast<pa_stream_flags_t>(PA_STREAM_START_CORKED | PA_STREAM_ADJUST_LATENCY |
                                                         PA_STREAM_DONT_MOVE | PA_STREAM_START_UNMUTED);
  return stream_.Open(endpoint, [&](pa_stream* stream) {
    pa_stream_set_read_callback(
        stream, [](pa_stream*, std::size_t, void* self) { static_cast<ServerRecording*>(self)->TakeAll(); }, this);
    return pa_stream_connect_record(stream, endpoint.key.name.c_str(), &buffer, kFlags);
  });
}

HRESULT ServerRecording::Start() {
  packets_->DropBegunPacket();
  toSkip_ = std::size_t{kStalePackets} * stream_.PacketBytes();
  const HRESULT status = stream_.Run(true);
  if (status != S_OK) return status;
  isRunning_ = true;
  connection_.WaitUntil(kWakeTime, [this] { return toSkip_ == 0 || !stream_.IsGood(); });
  return stream_.Status();
}

HRESULT ServerRecording::Stop() {
  const HRESULT status = stream_.Run(false);
  if (status == S_OK) isRunning_ = false;
  return status;
}

void ServerRecording::TakeAll() noexcept {
  const void* bytes = nullptr;
  std::size_t count = 0;
  while (pa_stream_peek(stream_.Handle(), &bytes, &count) >= 0 && count > 0) {
    try {
      Take(static_cast<const BYTE*>(bytes), count);
    } catch (...) {
      // There was no memory for these frames.
      packets_->NoteLoss();
    }
    pa_stream_drop(stream_.Handle());
  }
  connection_.WakeUp();
}

void ServerRecording::Take(const BYTE* bytes, std::size_t count) {
  const std::size_t skipped = std::min(toSkip_, count);
  toSkip_ -= skipped;
  // Null bytes are silence.
  packets_->Append(bytes == nullptr ? nullptr : bytes + skipped, count - skipped,
                   static_cast<std::int64_t>(pa_rtclock_now()) * 1000);
}

}  // namespace pulse_audio
