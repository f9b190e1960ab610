#pragma once

#include <initializer_list>
#include <memory>
#include <utility>

#include "platform/core_audio.h"
#include "platform/counted_object.h"
#include "platform/virtual/machine.h"
#ifdef _WIN32
#include "platform/windows/whole_table.h"
#endif

namespace virtual_audio {

using platform::Empty;
using platform::HandOut;

#ifndef _WIN32
// core_audio.h declares just the operations that the machine has.
template <class Interface>
using WholeTable = Interface;
#endif

// The base of every object that the machine hands out: a counted object that the machine knows of.
template <class Interface>
class Object : public platform::CountedObject<Interface, WholeTable<Interface>> {
 protected:
  // `endpoint` is the one that the object's operations are on, null for none.
  explicit Object(std::shared_ptr<Machine> machine, Endpoint* endpoint = nullptr)
      : machine_(std::move(machine)), endpoint_(endpoint) {
    machine_->ObjectBegins();
  }
  ~Object() override { machine_->ObjectEnds(); }

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
};

}  // namespace virtual_audio
