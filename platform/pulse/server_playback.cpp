#include "platform/pulse/server_playback.h"

#include <algorithm>
#include <span>

namespace pulse_audio {

namespace {

// The longest time for which a running stream may not play anything.
constexpr pa_usec_t kLongestStandstill = 2 * PA_USEC_PER_SEC;

// A sink may have mixed two seconds ahead, for the power it saves, when the stream comes. What it had mixed would go
// out before the stream's first frame, or the stream's frames be taken long before they sound.
constexpr pa_usec_t kShortLatency = 60 * PA_USEC_PER_MSEC;
constexpr pa_usec_t kLatencyPoll = 20 * PA_USEC_PER_MSEC;
constexpr pa_usec_t kLongestSettling = 2400 * PA_USEC_PER_MSEC;
constexpr int kMostPollsWithoutFall = 10;

}  // namespace

HRESULT ServerPlayback::Open(const ServerEndpoint& endpoint, UINT32 bufferFrames) {
  constexpr auto kServersChoice = static_cast<std::uint32_t>(-1);
  const pa_buffer_attr buffer{.maxlength = kServersChoice,
                              .tlength = bufferFrames * stream_.Format().FrameBytes(),
                              // It plays whatever is there, and doesn't stop when there is nothing.
                              .prebuf = 0,
                              .minreq = stream_.PacketBytes(),
                              .fragsize = kServersChoice};
  // Full against the endpoint's volume, also where streams and endpoints share one.
  constexpr auto kFlags =
      static_cast<pa_stream_flags_t>(PA_STREAM_START_CORKED | PA_STREAM_EARLY_REQUESTS | PA_STREAM_DONT_MOVE |
                                     PA_STREAM_START_UNMUTED | PA_STREAM_RELATIVE_VOLUME);
  pa_cvolume full;
  pa_cvolume_set(&full, stream_.Format().channels, PA_VOLUME_NORM);
  const HRESULT status = stream_.Open(endpoint, [&](pa_stream* stream) {
    return pa_stream_connect_playback(stream, endpoint.key.name.c_str(), &buffer, kFlags, &full, nullptr);
  });
  return status == S_OK ? Settle() : status;
}

HRESULT ServerPlayback::Padding(UINT32* frames) {
  const pa_timing_info* timing = nullptr;
  const HRESULT status = stream_.UpdateTiming(&timing);
  if (status != S_OK) return status;
  // A server that ran dry may count on.
  const std::int64_t bytes = std::max<std::int64_t>(timing->write_index - timing->read_index, 0);
  *frames = static_cast<UINT32>(bytes / stream_.Format().FrameBytes());
  const pa_usec_t now = pa_rtclock_now();
  if (!isRunning_ || *frames == 0 || *frames < lastPadding_) lastProgress_ = now;
  lastPadding_ = *frames;
  return now - lastProgress_ > kLongestStandstill ? AUDCLNT_E_RESOURCES_INVALIDATED : S_OK;
}

HRESULT ServerPlayback::Start() {
  lastProgress_ = pa_rtclock_now();
  const HRESULT status = stream_.Run(true);
  if (status == S_OK) isRunning_ = true;
  return status;
}

HRESULT ServerPlayback::Stop() {
  const HRESULT status = stream_.Run(false);
  if (status == S_OK) isRunning_ = false;
  return status;
}

HRESULT ServerPlayback::Settle() {
  pa_usec_t shortest = PA_USEC_MAX;
  int pollsWithoutFall = 0;
  const pa_usec_t end = pa_rtclock_now() + kLongestSettling;
  while (pa_rtclock_now() < end && pollsWithoutFall < kMostPollsWithoutFall) {
    const pa_timing_info* timing = nullptr;
    const HRESULT status = stream_.UpdateTiming(&timing);
    if (status != S_OK || timing->sink_usec <= kShortLatency) return status;
    pollsWithoutFall = timing->sink_usec < shortest ? 0 : pollsWithoutFall + 1;
    shortest = std::min<pa_usec_t>(shortest, timing->sink_usec);
    connection_.WaitUntil(kLatencyPoll, [this] { return !stream_.IsGood(); });
  }
  // The device's own latency is what it is.
  return stream_.Status();
}

HRESULT ServerPlayback::Write(std::span<const BYTE> frames) {
  const HRESULT status = stream_.Status();
  if (status != S_OK) return status;
  // Behind a server that ran dry and counted on, the frames would be late.
  const pa_seek_mode_t from = isRunning_ && lastPadding_ == 0 ? PA_SEEK_RELATIVE_ON_READ : PA_SEEK_RELATIVE;
  if (pa_stream_write(stream_.Handle(), frames.data(), frames.size(), nullptr, 0, from) < 0)
    return stream_.LastStatus();
  lastPadding_ += static_cast<UINT32>(frames.size() / stream_.Format().FrameBytes());
  lastProgress_ = pa_rtclock_now();
  return S_OK;
}

}  // namespace pulse_audio
