#include "platform/front/journal.h"

namespace platform {

const Fault* Journal::Begin(Operation operation, const std::shared_ptr<const EndpointState>& endpoint,
                            std::initializer_list<Argument> arguments) {
  if (isTraced_) trace_.push_back({operation, endpoint, arguments, E_OUTOFMEMORY});
  const std::int64_t call = ++calls_[operation.Index()];
  for (const Fault& fault : faults_) {
    if (fault.operation != operation.Index()) continue;
    if (call == fault.call || (fault.sticky && call > fault.call)) return &fault;
  }
  return nullptr;
}

HRESULT Journal::End(Operation operation, const std::shared_ptr<const EndpointState>& endpoint, HRESULT status) {
  if (isTraced_) trace_.back().status = status;
  if (FAILED(status)) lastRefusal_ = {operation, endpoint, status};
  return status;
}

}  // namespace platform
