#pragma once

#include <chrono>
#include <cstdio>
#include <string>

#include "host/base/interruption.h"

namespace host {

// How a child process ended.
struct ChildEnd {
  enum class How { kExited, kCrashed, kTimedOut, kInterrupted };

  How how = How::kExited;
  int exitCode = 0;    // kExited
  std::string crash;   // kCrashed: what ended it, as "SIGSEGV (Segmentation fault)"
  std::string output;  // what it wrote to its standard output, also when it was ended
};

// Runs this program once more, with `command` as its only argument and `input` on its standard input, and waits for its
// end. When `timeout` has passed, or on a request to end, the child is ended at once, and what it has started with it.
// It also ends when this process does. Throws Failure when the system gives no process.
ChildEnd RunSelf(const std::string& command, const std::string& input, std::chrono::duration<double> timeout,
                 const Interruption& interruption);

// In the child: what was its standard output, from now on its alone. Whatever else is written to standard output goes
// to standard error. The caller closes the stream. Null when the system won't.
std::FILE* SeparateOutput();

}  // namespace host
