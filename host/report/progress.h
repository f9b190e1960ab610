#pragma once

#include <condition_variable>
#include <cstdint>
#include <filesystem>
#include <mutex>
#include <string>
#include <thread>

#include "host/base/text_output.h"

namespace host {

// Shows on standard error how far a test is, for the object's life, when that is a terminal. The module tells nobody
// but its log, so the log is followed, on a thread of its own, from where it ended when the object was made.
class Progress {
 public:
  // `label` stands in front of the bar, which the test moves from `start` to `end`, shares of the whole from 0.0
  // to 1.0.
  Progress(std::string label, std::filesystem::path logFile, double start, double end);
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress();

 private:
  void Follow(const std::stop_token& stop);
  void ReadNewLines();
  void ReadLine(const std::string& line);
  void Draw();
  void Erase();

  std::string label_;
  std::filesystem::path logFile_;
  double start_, end_;
  Style style_;
  std::uintmax_t position_ = 0;  // bytes of the log that have been read
  std::string partialLine_;
  int percent_ = 0;
  std::size_t drawnBytes_ = 0;
  std::mutex mutex_;
  std::condition_variable_any stopped_;
  std::jthread follower_;  // last, so that it ends before what it uses
};

}  // namespace host
