#include "platform/virtual/machine.h"

#include <algorithm>

namespace virtual_audio {

Machine::Machine(const MachineDescription& description)
    : clock_(description.hasVirtualClock),
      seed_(description.seed),
      endpoints_(description.endpoints.begin(), description.endpoints.end()) {
  for (const Endpoint& endpoint : endpoints_) {
    for (const Hearing& hearing : endpoint.hears) longestDelay_ = std::max(longestDelay_, hearing.delay);
  }
  for (const Fault& fault : description.faults) faults_[fault.operation].push_back(fault);
}

void Machine::Sleep(DWORD milliseconds) noexcept {
  Call("Sleep", nullptr, {{"milliseconds", milliseconds}}, [&] {
    clock_.Sleep(milliseconds);
    return S_OK;
  });
}

std::uint64_t Machine::NoiseSeed(const Endpoint& endpoint) const {
  return (seed_ << 32) + static_cast<std::uint64_t>(&endpoint - endpoints_.data());
}

// Levels, mute and queues change in operations only, so what they are now they have been since the last one.
void Machine::Advance() {
  const Time now = clock_.Now();
  if (now == now_) return;
  now_ = now;
  for (Endpoint& endpoint : endpoints_) {
    for (const auto& stream : endpoint.renderStreams) {
      stream->Play(now, endpoint.PlayGains(stream->Format().channels));
    }
  }
  for (Endpoint& endpoint : endpoints_) {
    const auto listen = [this, &endpoint](std::span<double> mix, const FrameGrid& grid) {
      for (const Hearing& hearing : endpoint.hears) {
        for (const auto& stream : endpoints_[hearing.endpoint].renderStreams) {
          stream->AddTo(mix, grid, hearing.delay, hearing.gain);
        }
      }
    };
    for (const auto& stream : endpoint.captureStreams) {
      stream->Record(now, endpoint.RecordGains(stream->Format().channels), endpoint.noise, listen);
    }
  }
  DropEndedStreams();
}

void Machine::DropEndedStreams() {
  for (Endpoint& endpoint : endpoints_) {
    std::erase_if(endpoint.captureStreams, [](const auto& stream) { return stream.use_count() == 1; });
    // A render stream is heard for a while after it has ended.
    std::erase_if(endpoint.renderStreams, [this](const auto& stream) {
      return !stream->ForgetBefore(now_ - longestDelay_) && stream.use_count() == 1;
    });
  }
}

const Fault* Machine::NextFault(Operation operation) {
  const std::int64_t call = ++calls_[operation.Index()];
  for (const Fault& fault : faults_[operation.Index()]) {
    if (call == fault.call || (fault.sticky && call > fault.call)) return &fault;
  }
  return nullptr;
}

}  // namespace virtual_audio
