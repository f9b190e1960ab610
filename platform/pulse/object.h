#pragma once

#include <memory>
#include <utility>

#include "platform/counted_object.h"
#include "platform/pulse/connection.h"

namespace pulse_audio {

using platform::Empty;
using platform::HandOut;

// The base of every object that the sound server's platform hands out: a counted object on the connection.
template <class Interface>
class Object : public platform::CountedObject<Interface> {
 protected:
  explicit Object(std::shared_ptr<Connection> connection) : connection_(std::move(connection)) {}

  // Carries out one operation of this object. E_OUTOFMEMORY when there is no memory for that.
  template <class Body>
  HRESULT Call(Body body) noexcept {
    // Only the allocator throws in here.
    try {
      const Connection::Lock lock(*connection_);
      return body();
    } catch (...) {
      return E_OUTOFMEMORY;
    }
  }

  const std::shared_ptr<Connection>& GetConnection() const { return connection_; }

 private:
  std::shared_ptr<Connection> connection_;
};

}  // namespace pulse_audio
