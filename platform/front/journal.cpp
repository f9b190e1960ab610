#include "platform/front/journal.h"

namespace platform {

const Fault* Journal::Begin(Operation operation, const std::shared_ptr<const EndpointState>& endpoint,
                            std::initializer_list<Argument> arguments) {
  if (isTraced_ && trace_.size() < kMostTraced) {
    trace_.push_back({operation, endpoint, arguments, E_OUTOFMEMORY});
  } else if (isTraced_) {
    ++untracedCalls_;
  }
  const std::int64_t call = ++calls_[operation.Index()];
  for (const Fault& fault : faults_) {
    if (fault.operation != operation.Index()) continue;
    if (call == fault.call || (fault.sticky && call > fault.call)) return &fault;
  }
  return nullptr;
}

HRESULT Journal::End(Operation operation, const std::shared_ptr<const EndpointState>& endpoint, HRESULT status) {
  if (isTraced_ && untracedCalls_ == 0) trace_.back().status = status;
  if (FAILED(status)) lastRefusal_ = {operation, endpoint, status};
  return status;
}

}  // namespace platform
