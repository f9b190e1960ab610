#pragma once

#include <initializer_list>
#include <memory>
#include <new>
#include <utility>

#include "audio/platform/core_audio.h"
#include "audio/platform/virtual/machine.h"
#ifdef _WIN32
#include "audio/platform/windows/whole_table.h"
#endif

namespace virtual_audio {

#ifndef _WIN32
// core_audio.h declares just the operations that the machine has.
template <class Interface>
using WholeTable = Interface;
#endif

// The base of every object that the machine hands out, and the one place that knows what a counted object is: it counts
// its references, answers for the one interface that it implements, and ends with its last reference.
template <class Interface>
class Object : public WholeTable<Interface> {
 public:
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;

  HRESULT QueryInterface(REFIID iid, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (!(iid == InterfaceId<Interface>()) && !(iid == InterfaceId<IUnknown>())) return E_NOINTERFACE;
    AddRef();
    *object = static_cast<Interface*>(this);
    return S_OK;
  }

  ULONG AddRef() override { return ++references_; }

  ULONG Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

 protected:
  // `endpoint` is the one that the object's operations are on, null for none.
  explicit Object(std::shared_ptr<Machine> machine, Endpoint* endpoint = nullptr)
      : machine_(std::move(machine)), endpoint_(endpoint) {
    machine_->ObjectBegins();
  }
  virtual ~Object() { machine_->ObjectEnds(); }

  // Carries out one operation of this object.
  template <class Body>
  HRESULT Call(Operation operation, std::initializer_list<Argument> arguments, Body body) noexcept {
    return machine_->Call(operation, endpoint_, arguments, std::move(body));
  }

  const std::shared_ptr<Machine>& GetMachine() const { return machine_; }
  Endpoint& GetEndpoint() const { return *endpoint_; }

 private:
  std::shared_ptr<Machine> machine_;
  Endpoint* endpoint_;
  ULONG references_ = 0;
};

// Hands out a new object's first reference. Throws std::bad_alloc.
template <class Class, class Interface, class... Arguments>
HRESULT HandOut(Interface** object, Arguments&&... arguments) {
  *object = new Class(std::forward<Arguments>(arguments)...);
  (*object)->AddRef();
  return S_OK;
}

// An operation that fails hands nothing out: the place for its object is null from the start.
template <class Interface>
void Empty(Interface** object) {
  if (object != nullptr) *object = nullptr;
}

// Memory for the caller to release with CoTaskMemFree. Throws std::bad_alloc.
inline void* TaskMemory(std::size_t bytes) {
  void* memory = CoTaskMemAlloc(bytes);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

}  // namespace virtual_audio
