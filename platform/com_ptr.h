#pragma once

#include <utility>

// One counted reference to a platform object, or null. Releases it when destroyed or overwritten. Not copied: the
// engine never shares a reference, it only moves one.
template <class Interface>
class ComPtr {
 public:
  ComPtr() = default;
  // Takes over a reference that the caller holds.
  explicit ComPtr(Interface* owned) : object_(owned) {}
  ComPtr(ComPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  ComPtr& operator=(ComPtr&& other) noexcept {
    if (this != &other) {
      Reset();
      object_ = std::exchange(other.object_, nullptr);
    }
    return *this;
  }
  ~ComPtr() { Reset(); }

  void Reset() {
    if (object_ != nullptr) std::exchange(object_, nullptr)->Release();
  }

  // The place for an operation to put a new reference in. What was held is released first.
  Interface** Receive() {
    Reset();
    return &object_;
  }
  // The same, for the operations that hand out any interface.
  void** ReceiveAny() { return reinterpret_cast<void**>(Receive()); }

  Interface* Get() const { return object_; }
  Interface* operator->() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }

 private:
  Interface* object_ = nullptr;
};
