#pragma once

#include <initializer_list>
#include <utility>

#include "platform/core_audio.h"
#include "platform/front/context.h"
#ifdef _WIN32
#include "platform/windows/whole_table.h"
#endif

namespace platform {

#ifndef _WIN32
// core_audio.h declares just the operations that the front has.
template <class Interface>
using WholeTable = Interface;
#endif

// The base of every object that callers hold, and the one place that knows what a counted object is: it counts its
// references, answers for the one interface that it implements, and ends with its last reference.
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
  explicit Object(Context context) : context_(std::move(context)) { context_.journal->ObjectBegins(); }
  virtual ~Object() { context_.journal->ObjectEnds(); }

  // Carries out one operation of this object.
  template <class Body>
  HRESULT Call(Operation operation, std::initializer_list<Argument> arguments, Body body) noexcept {
    return context_.Call(operation, arguments, std::move(body));
  }

  const Context& GetContext() const { return context_; }
  Backend& GetBackend() const { return *context_.backend; }
  const EndpointKey& Key() const { return context_.endpoint->key; }

 private:
  const Context context_;
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

// Puts a value into the place that a caller gave for it.
template <class Value>
HRESULT Give(Value* place, Value value) {
  if (place == nullptr) return E_POINTER;
  *place = value;
  return S_OK;
}

}  // namespace platform
