#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "platform/core_audio.h"
#include "platform/virtual/clock.h"
#include "platform/virtual/description.h"
#include "platform/virtual/endpoint.h"
#include "platform/virtual/operation.h"
#include "platform/virtual/trace.h"

namespace virtual_audio {

// The virtual machine: its clock, its endpoints, the faults it is told to have and the trace of what was called. Every
// object that it hands out shares it; it ends with the last of them. For one thread.
class Machine {
 public:
  explicit Machine(const MachineDescription& description);

  // Carries out one operation: brings the sound up to now, then runs `body`, which gives the status, unless a fault
  // takes its place; and puts the call into the trace. E_OUTOFMEMORY when there is no memory for that.
  template <class Body>
  HRESULT Call(Operation operation, const Endpoint* endpoint, std::initializer_list<Argument> arguments,
               Body body) noexcept;

  // Sleep, the one operation without a status.
  void Sleep(DWORD milliseconds) noexcept;

  // The time of the operation being carried out.
  Time Now() const { return now_; }
  std::vector<Endpoint>& Endpoints() { return endpoints_; }
  // The seed of the noise on an endpoint: every stream there hears the same.
  std::uint64_t NoiseSeed(const Endpoint& endpoint) const;

  void ObjectBegins() { ++liveObjects_; }
  void ObjectEnds() { --liveObjects_; }

  // The text that docs/virtual-machine.md describes, in UTF-8.
  std::string StateText() const;

 private:
  void Advance();
  void DropEndedStreams();
  // Counts the call; the fault to have instead of it, or null.
  const Fault* NextFault(Operation operation);

  Clock clock_;
  std::uint64_t seed_;
  std::vector<Endpoint> endpoints_;
  Time longestDelay_ = 0;
  Time now_ = 0;
  std::array<std::vector<Fault>, kOperations.size()> faults_;
  std::array<std::int64_t, kOperations.size()> calls_{};
  std::vector<TraceEntry> trace_;
  std::int64_t liveObjects_ = 0;
};

template <class Body>
HRESULT Machine::Call(Operation operation, const Endpoint* endpoint, std::initializer_list<Argument> arguments,
                      Body body) noexcept {
  // Only the allocator throws in here. Without room for the trace the operation isn't carried out.
  try {
    Advance();
    const std::size_t entry = trace_.size();
    trace_.push_back({operation, endpoint, arguments, E_OUTOFMEMORY});
    const Fault* fault = NextFault(operation);
    return trace_[entry].status = fault != nullptr ? fault->status : body();
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

}  // namespace virtual_audio
