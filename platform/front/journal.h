#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <utility>
#include <variant>
#include <vector>

#include "platform/core_audio.h"
#include "platform/endpoint_state.h"
#include "platform/front/operation.h"

namespace platform {

// One named argument of an operation.
struct Argument {
  const char* name;
  std::variant<std::int64_t, float, bool, IID, PROPERTYKEY> value;
};

struct TraceEntry {
  Operation operation;
  std::shared_ptr<const EndpointState> endpoint;  // null for an operation that isn't on an endpoint
  std::vector<Argument> arguments;
  HRESULT status;
};

// What was called on a platform, what is to fail, and how many objects are held.
class Journal {
 public:
  explicit Journal(std::vector<Fault> faults) : faults_(std::move(faults)) {}

  // Enters a call, which ends with End before the next begins. Gives the fault to have instead of it, or null. Throws
  // std::bad_alloc; then the call isn't entered.
  const Fault* Begin(Operation operation, const std::shared_ptr<const EndpointState>& endpoint,
                     std::initializer_list<Argument> arguments);
  // Gives the status back. A call that never gets here stays with E_OUTOFMEMORY.
  HRESULT End(HRESULT status) { return trace_.back().status = status; }

  void ObjectBegins() { ++liveObjects_; }
  void ObjectEnds() { --liveObjects_; }

  const std::vector<TraceEntry>& Trace() const { return trace_; }
  std::int64_t LiveObjects() const { return liveObjects_; }

 private:
  const std::vector<Fault> faults_;
  std::array<std::int64_t, kOperations.size()> calls_{};
  std::vector<TraceEntry> trace_;
  std::int64_t liveObjects_ = 0;
};

}  // namespace platform
