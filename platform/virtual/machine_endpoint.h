#pragma once

#include <memory>
#include <vector>

#include "platform/core_audio.h"
#include "platform/virtual/clock.h"
#include "platform/virtual/description.h"
#include "platform/virtual/machine_playback.h"
#include "platform/virtual/machine_recording.h"

namespace virtual_audio {

// An endpoint as it is now: `levels` and `muted` are the present ones, and outlive the streams.
struct MachineEndpoint : EndpointDescription {
  explicit MachineEndpoint(const EndpointDescription& description) : EndpointDescription(description) {}

  // As Backend::TakesFormat, with `closest` being the description's.
  HRESULT TakesFormat(const std::optional<SampleFormat>& wanted) const;

  // The gain of each of the channels of a stream on this endpoint. A stream with one channel uses all channels of the
  // endpoint, and an endpoint with one channel all of the stream; otherwise they pair off by their numbers, and one
  // without a partner is silent.
  std::vector<double> RecordGains(WORD channels) const;
  // The same, such that their sum over a frame is the mean over the endpoint's channels of what they put out.
  std::vector<double> PlayGains(WORD channels) const;

  // When this endpoint begins to hear something, as far as what was played so far tells.
  Time heardSince = kNever;

  // A stream is also held by whoever opened it. One that is only held here has ended.
  std::vector<std::shared_ptr<MachinePlayback>> playbacks;
  std::vector<std::shared_ptr<MachineRecording>> recordings;

 private:
  double Gain(std::size_t channel) const;
};

}  // namespace virtual_audio
