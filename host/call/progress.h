#pragma once

#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <string>
#include <thread>

#include "host/base/text_output.h"
#include "host/call/log_excerpt.h"

namespace host {

// Shows on standard error how far a test is, for the object's life, when that is a terminal. The module tells nobody
// but its log, so the log is followed on a thread of its own.
class Progress {
 public:
  // What stands in front of the bar, and which part of the whole, from 0.0 to 1.0, the test is.
  struct Span {
    std::string label;
    double start = 0.0, end = 1.0;
  };

  Progress(Span span, const std::filesystem::path& logFile);
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress();

 private:
  void Follow(const std::stop_token& stop);
  void Draw(int percent);
  void Erase();

  Span span_;
  LogExcerpt log_;
  Style style_;
  std::size_t drawnBytes_ = 0;
  std::mutex mutex_;
  std::condition_variable_any stopped_;
  std::jthread follower_;  // last, so that it ends before what it uses
};

}  // namespace host
