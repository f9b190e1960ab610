#pragma once

#include <future>
#include <optional>
#include <string>
#include <variant>

#include "host/listening/listener.h"

namespace host {

// Listens to a capture endpoint for the object's life, beside the module. A platform whose endpoints are those of the
// thread that is on it is listened to on this thread; any other on a thread, and so a connection, of its own. Two
// streams of one connection can get in each other's way: PipeWire's PulseAudio server now and then gives the second one
// silence.
class Listening {
 public:
  // `platform` as --platform takes it, but for "auto". Returns when listening has begun, or can't; an audio system that
  // won't have it is never an error of the test.
  Listening(const std::string& platform, const std::string& captureId, Kept kept);

  // Ends listening. What was heard, or a sentence on why there is nothing. Called once.
  std::variant<CapturedSound, std::string> Finish();

 private:
  const Kept kept_;
  std::optional<Listener> here_;
  std::string trouble_;  // why nothing listens here
  std::future<CapturedSound> there_;
  std::promise<void> end_;  // after there_, so that the thread is told to end before it is waited for
};

}  // namespace host
