#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <optional>
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

// An operation that failed.
struct Refusal {
  Operation operation;
  std::shared_ptr<const EndpointState> endpoint;  // null for an operation that isn't on an endpoint
  HRESULT status;
};

// What failed last, what is to fail, how many objects are held and, where it is traced, what was called: of all callers on
// a platform but its observers, or of these.
class Journal {
 public:
  // A caller that polls without end must not take all memory.
  static constexpr std::size_t kMostTraced = 100'000;

  Journal(std::vector<Fault> faults, bool isTraced) : faults_(std::move(faults)), isTraced_(isTraced) {}

  // Enters a call, which ends with End before the next begins. Gives the fault to have instead of it, or null. Throws
  // std::bad_alloc; then the call isn't entered.
  const Fault* Begin(Operation operation, const std::shared_ptr<const EndpointState>& endpoint,
                     std::initializer_list<Argument> arguments);
  // Gives the status of that call back. A call that never gets here stays with E_OUTOFMEMORY.
  HRESULT End(Operation operation, const std::shared_ptr<const EndpointState>& endpoint, HRESULT status);

  void ObjectBegins() { ++liveObjects_; }
  void ObjectEnds() { --liveObjects_; }

  bool IsTraced() const { return isTraced_; }
  // The first kMostTraced calls.
  const std::vector<TraceEntry>& Trace() const { return trace_; }
  // How many came after those.
  std::int64_t UntracedCalls() const { return untracedCalls_; }
  const std::optional<Refusal>& LastRefusal() const { return lastRefusal_; }
  std::int64_t LiveObjects() const { return liveObjects_; }

 private:
  const std::vector<Fault> faults_;
  const bool isTraced_;
  std::array<std::int64_t, kOperations.size()> calls_{};
  std::vector<TraceEntry> trace_;
  std::int64_t untracedCalls_ = 0;
  std::optional<Refusal> lastRefusal_;
  std::atomic<std::int64_t> liveObjects_ = 0;  // objects may be released on any thread
};

}  // namespace platform
