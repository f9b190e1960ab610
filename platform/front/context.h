#pragma once

#include <initializer_list>
#include <memory>
#include <mutex>

#include "platform/backend.h"
#include "platform/core_audio.h"
#include "platform/front/journal.h"

namespace platform {

// What an object of the front belongs to. It hands it on to the objects that it makes, which so outlive the platform.
struct Context {
  std::shared_ptr<Backend> backend;
  std::shared_ptr<Journal> journal;               // never null
  std::shared_ptr<const EndpointState> endpoint;  // as it was when its device was found; null for no endpoint

  // Carries out one operation: `body`, which gives the status, unless a fault takes its place. E_OUTOFMEMORY when there
  // is no memory for that.
  template <class Body>
  HRESULT Call(Operation operation, std::initializer_list<Argument> arguments, Body body) const noexcept {
    // Only the allocator throws in here. Without room for the trace the operation isn't carried out.
    try {
      const std::lock_guard turn(*backend);
      const Fault* const fault = journal->Begin(operation, endpoint, arguments);
      return journal->End(operation, endpoint, fault != nullptr ? fault->status : body());
    } catch (...) {
      return E_OUTOFMEMORY;
    }
  }
};

}  // namespace platform
