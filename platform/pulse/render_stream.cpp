#include "platform/pulse/render_stream.h"

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
constexpr int kMostPolls = 120;
constexpr int kMostPollsWithoutFall = 10;

}  // namespace

int RenderStream::Connect(const Endpoint& endpoint) {
  constexpr auto kServersChoice = static_cast<std::uint32_t>(-1);
  const pa_buffer_attr buffer{.maxlength = kServersChoice,
                              .tlength = bufferFrames_ * format_.FrameBytes(),
                              // It plays whatever is there, and doesn't stop when there is nothing.
                              .prebuf = 0,
                              .minreq = PacketBytes(),
                              .fragsize = kServersChoice};
  // Full against the endpoint's volume, also where streams and endpoints share one.
  constexpr auto kFlags =
      static_cast<pa_stream_flags_t>(PA_STREAM_START_CORKED | PA_STREAM_EARLY_REQUESTS | PA_STREAM_DONT_MOVE |
                                     PA_STREAM_START_UNMUTED | PA_STREAM_RELATIVE_VOLUME);
  pa_cvolume full;
  pa_cvolume_set(&full, format_.channels, PA_VOLUME_NORM);
  return pa_stream_connect_playback(Handle(), endpoint.serverName.c_str(), &buffer, kFlags, &full, nullptr);
}

HRESULT RenderStream::Padding(UINT32* frames) {
  const pa_timing_info* timing = nullptr;
  const HRESULT status = UpdateTiming(&timing);
  if (status != S_OK) return status;
  // A server that ran dry may count on.
  const std::int64_t bytes = std::max<std::int64_t>(timing->write_index - timing->read_index, 0);
  *frames = static_cast<UINT32>(bytes / format_.FrameBytes());
  const pa_usec_t now = pa_rtclock_now();
  if (!IsRunning() || *frames == 0 || *frames < lastPadding_) lastProgress_ = now;
  lastPadding_ = *frames;
  return now - lastProgress_ > kLongestStandstill ? AUDCLNT_E_RESOURCES_INVALIDATED : S_OK;
}

HRESULT RenderStream::Start() {
  lastProgress_ = pa_rtclock_now();
  return Run(true);
}

HRESULT RenderStream::Settle() {
  pa_usec_t shortest = PA_USEC_MAX;
  int pollsWithoutFall = 0;
  for (int poll = 0; poll < kMostPolls && pollsWithoutFall < kMostPollsWithoutFall; ++poll) {
    const pa_timing_info* timing = nullptr;
    const HRESULT status = UpdateTiming(&timing);
    if (status != S_OK || timing->sink_usec <= kShortLatency) return status;
    pollsWithoutFall = timing->sink_usec < shortest ? 0 : pollsWithoutFall + 1;
    shortest = std::min<pa_usec_t>(shortest, timing->sink_usec);
    GetConnection().WaitUntil(kLatencyPoll, [this] { return !IsGood(); });
  }
  // The device's own latency is what it is.
  return Status();
}

HRESULT RenderStream::GetBuffer(UINT32 frames, BYTE** data) {
  UINT32 padding = 0;
  const HRESULT status = Padding(&padding);
  if (status != S_OK) return status;
  return area_.GetBuffer(frames, bufferFrames_ - std::min(padding, bufferFrames_), data);
}

HRESULT RenderStream::ReleaseBuffer(UINT32 frames, DWORD flags) {
  std::span<const BYTE> filled;
  HRESULT status = area_.ReleaseBuffer(frames, flags, &filled);
  if (status != S_OK || filled.empty()) return status;
  status = Status();
  if (status != S_OK) return status;
  // Behind a server that ran dry and counted on, the frames would be late.
  const pa_seek_mode_t from = IsRunning() && lastPadding_ == 0 ? PA_SEEK_RELATIVE_ON_READ : PA_SEEK_RELATIVE;
  if (pa_stream_write(Handle(), filled.data(), filled.size(), nullptr, 0, from) < 0) {
    return GetConnection().StatusOf(pa_context_errno(GetConnection().Context()));
  }
  lastPadding_ += frames;
  lastProgress_ = pa_rtclock_now();
  return S_OK;
}

}  // namespace pulse_audio
