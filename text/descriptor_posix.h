#pragma once

#include <unistd.h>

#include <utility>

namespace text {

// A file descriptor of a POSIX system, closed at its end; negative for none.
class Descriptor {
 public:
  explicit Descriptor(int number = -1) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(other.Release()) {}
  Descriptor& operator=(Descriptor&&) = delete;
  ~Descriptor() { Close(); }

  explicit operator bool() const { return number_ >= 0; }
  int Get() const { return number_; }
  // Leaves it to the caller to close it.
  int Release() { return std::exchange(number_, -1); }
  void Close() {
    if (number_ >= 0) close(Release());
  }

 private:
  int number_;
};

}  // namespace text
