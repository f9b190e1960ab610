#include "platform/virtual/machine.h"

#include <algorithm>
#include <utility>

namespace virtual_audio {

namespace {

// What the opener holds of a stream. The stream stops when the opener lets it go, but stays: what it played is heard
// for a while.
template <class MachineStream>
std::shared_ptr<MachineStream> OpenersHold(std::shared_ptr<MachineStream> stream) {
  MachineStream* const held = stream.get();
  return {held, [stream = std::move(stream)](MachineStream*) { stream->Stop(); }};
}

}  // namespace

Machine::Machine(MachineDescription description)
    : clock_(description.hasVirtualClock),
      seed_(description.seed),
      faults_(std::move(description.faults)),
      endpoints_(description.endpoints.begin(), description.endpoints.end()) {
  for (const MachineEndpoint& endpoint : endpoints_) {
    const Time echo = SoundPath::LongestEcho(endpoint.path);
    for (const Hearing& hearing : endpoint.hears) longestDelay_ = std::max(longestDelay_, hearing.delay + echo);
  }
}

HRESULT Machine::List(std::vector<platform::EndpointState>* endpoints) {
  for (const MachineEndpoint& endpoint : endpoints_) endpoints->push_back(endpoint);
  return S_OK;
}

HRESULT Machine::Find(const platform::EndpointKey& key, platform::EndpointState* endpoint) {
  *endpoint = EndpointOf(key);
  return S_OK;
}

HRESULT Machine::SetLevel(const platform::EndpointKey& key, UINT channel, float level) {
  MachineEndpoint& endpoint = EndpointOf(key);
  // NaN fails both comparisons.
  const bool isLevel = level >= 0.0F && level <= 1.0F;
  if (channel >= endpoint.levels.size() || !isLevel) return E_INVALIDARG;
  endpoint.levels[channel] = level;
  return S_OK;
}

HRESULT Machine::SetMute(const platform::EndpointKey& key, bool muted) {
  EndpointOf(key).muted = muted;
  return S_OK;
}

HRESULT Machine::TakesFormat(const platform::EndpointKey& key, const std::optional<SampleFormat>& wanted,
                             SampleFormat* closest) {
  const MachineEndpoint& endpoint = EndpointOf(key);
  const HRESULT status = endpoint.TakesFormat(wanted);
  if (status == S_FALSE) *closest = *endpoint.closest;
  return status;
}

HRESULT Machine::OpenPlayback(const platform::EndpointKey& key, const SampleFormat& format, UINT32,
                              std::shared_ptr<platform::Playback>* stream) {
  auto& playbacks = EndpointOf(key).playbacks;
  playbacks.push_back(std::make_shared<MachinePlayback>(format, now_));
  *stream = OpenersHold(playbacks.back());
  return S_OK;
}

HRESULT Machine::OpenRecording(const platform::EndpointKey& key, const SampleFormat& format,
                               std::shared_ptr<platform::PacketQueue> packets,
                               std::shared_ptr<platform::Recording>* stream) {
  MachineEndpoint& endpoint = EndpointOf(key);
  if (endpoint.marksSilence) packets->MarkSilence();
  // Every stream on an endpoint hears the same noise.
  const std::uint64_t seed = (seed_ << 32) + static_cast<std::uint64_t>(&endpoint - endpoints_.data());
  endpoint.recordings.push_back(std::make_shared<MachineRecording>(format, std::move(packets),
                                                                   SoundPath(endpoint, format.rate, seed), seed, now_));
  *stream = OpenersHold(endpoint.recordings.back());
  return S_OK;
}

// The keys are the machine's own, and no endpoint ever goes.
MachineEndpoint& Machine::EndpointOf(const platform::EndpointKey& key) {
  return *std::find_if(endpoints_.begin(), endpoints_.end(),
                       [&](const MachineEndpoint& endpoint) { return endpoint.key.name == key.name; });
}

// Levels, mute and queues change only in operations, so they have had their present values since the last one.
void Machine::Advance() {
  const Time now = clock_.Now();
  if (now == now_) return;
  now_ = now;
  for (MachineEndpoint& endpoint : endpoints_) {
    for (const auto& stream : endpoint.playbacks) stream->Play(endpoint.PlayGains(stream->Format().channels));
  }
  for (MachineEndpoint& endpoint : endpoints_) {
    NoteHearing(endpoint);
    const auto listen = [this, &endpoint](std::span<double> mix, const FrameGrid& grid, Time delay, double gain) {
      for (const Hearing& hearing : endpoint.hears) {
        for (const auto& stream : endpoints_[hearing.endpoint].playbacks) {
          stream->AddTo(mix, grid, hearing.delay + delay, hearing.gain * gain);
        }
      }
    };
    for (const auto& stream : endpoint.recordings) {
      stream->Record(endpoint.RecordGains(stream->Format().channels), endpoint.noise, endpoint.heardSince, listen);
    }
  }
  DropEndedStreams();
}

// A stream that begins now isn't heard before now, so this never changes what was recorded.
void Machine::NoteHearing(MachineEndpoint& endpoint) const {
  if (endpoint.path.empty()) return;
  for (const Hearing& hearing : endpoint.hears) {
    for (const auto& stream : endpoints_[hearing.endpoint].playbacks) {
      endpoint.heardSince = std::min(endpoint.heardSince, stream->Began() + hearing.delay);
    }
  }
}

void Machine::DropEndedStreams() {
  for (MachineEndpoint& endpoint : endpoints_) {
    std::erase_if(endpoint.recordings, [](const auto& stream) { return stream.use_count() == 1; });
    // A playback is heard for a while after it has ended.
    std::erase_if(endpoint.playbacks, [this](const auto& stream) {
      return !stream->ForgetBefore(now_ - longestDelay_) && stream.use_count() == 1;
    });
  }
}

}  // namespace virtual_audio
