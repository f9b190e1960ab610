#pragma once

#include <utility>

#include "platform/core_audio.h"

namespace platform {

// The base of every object that a platform hands out, and the one place that knows what a counted object is: it counts
// its references, answers for the one interface that it implements, and ends with its last reference. `Table` is the
// interface itself, or the interface with the operations filled in that the platform has no use for.
template <class Interface, class Table = Interface>
class CountedObject : public Table {
 public:
  CountedObject(const CountedObject&) = delete;
  CountedObject& operator=(const CountedObject&) = delete;

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
  CountedObject() = default;
  virtual ~CountedObject() = default;

 private:
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

}  // namespace platform
