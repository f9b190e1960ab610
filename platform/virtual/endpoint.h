#pragma once

#include <memory>
#include <vector>

#include "platform/core_audio.h"
#include "platform/virtual/capture_stream.h"
#include "platform/virtual/description.h"
#include "platform/virtual/render_stream.h"

namespace virtual_audio {

// An endpoint as it is now: `levels` and `muted` are the present ones, and outlive the streams.
struct Endpoint : EndpointDescription {
  explicit Endpoint(const EndpointDescription& description) : EndpointDescription(description) {}

  // S_OK when a stream can have `wanted` without conversion; S_FALSE when it can have `closest` instead;
  // AUDCLNT_E_UNSUPPORTED_FORMAT when it can have neither.
  HRESULT Supports(const std::optional<SampleFormat>& wanted) const;

  // The gain of each of the channels of a stream on this endpoint. A stream with one channel uses all channels of the
  // endpoint, and an endpoint with one channel all of the stream; otherwise they pair off by their numbers, and one
  // without a partner is silent.
  std::vector<double> RecordGains(WORD channels) const;
  // The same, such that their sum over a frame is the mean over the endpoint's channels of what they put out.
  std::vector<double> PlayGains(WORD channels) const;

  // A stream is also held by its client. One that only stands here has ended.
  std::vector<std::shared_ptr<RenderStream>> renderStreams;
  std::vector<std::shared_ptr<CaptureStream>> captureStreams;

 private:
  double Gain(std::size_t channel) const;
};

}  // namespace virtual_audio
