#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

#include "host/base/text_output.h"

namespace host {

// Shows on standard error how far a test is, for the object's life, when that is a terminal that can. The module tells
// nobody how far it is, but every test takes a known time: the bar moves by the clock, and waits at its end.
class Progress {
 public:
  // What stands in front of the bar, and which part of the whole, from 0.0 to 1.0, the test is.
  struct Span {
    std::string label;
    double start = 0.0, end = 1.0;
  };

  Progress(Span span, std::chrono::duration<double> expected);
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress();

 private:
  void Follow(const std::stop_token& stop);
  void Draw(double share);
  void Erase();

  Span span_;
  std::chrono::duration<double> expected_;
  Style style_;
  std::size_t drawnBytes_ = 0;
  std::mutex mutex_;
  std::condition_variable_any stopped_;
  std::jthread follower_;  // last, so that it ends before what it uses
};

}  // namespace host
