#pragma once

#include <cstdint>

namespace host {

// Takes note, for the object's life, of requests to end rmthost: Ctrl-C, a closed terminal, a request from another
// program. Without it such a request ends the process at once. A request that the system was told to ignore stays
// ignored. One object at a time. Each system has a source file of its own; CMake picks it.
class Interruption {
 public:
  Interruption();
  Interruption(const Interruption&) = delete;
  Interruption& operator=(const Interruption&) = delete;
  ~Interruption();

  // Whether there was a request; stays so.
  bool Requested() const;

  // What to wait for until there is a request: a descriptor that becomes readable, on Windows an event's handle. It
  // stays the object's.
  std::intptr_t Waitable() const { return waitable_; }

 private:
  std::intptr_t waitable_;
};

}  // namespace host
