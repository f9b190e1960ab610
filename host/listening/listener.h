#pragma once

#include <string>
#include <variant>
#include <vector>

#include "host/listening/heard.h"
#include "host/listening/listener_format.h"
#include "platform/com_ptr.h"
#include "platform/core_audio.h"

namespace host {

// Listens to a capture endpoint along with the module: a second stream in shared mode, which changes neither the
// endpoint nor what the module captures. Nothing is read while it runs, so that it costs the thread nothing; what
// doesn't fit its buffer of ten seconds, or less where the system won't have that, isn't heard.
//
// The thread must stay on the platform. An audio system that won't have it is never an error of the test.
class Listener {
 public:
  // Listens from now on to the active endpoint with exactly this id.
  explicit Listener(const std::string& captureId);

  // Ends listening, and releases all of the platform. What was heard on the loudest channel, or why there is nothing,
  // in a sentence. Called once.
  std::variant<Heard, std::string> Finish();

 private:
  std::string Open(IMMDevice& device);
  std::string Drain(std::vector<BYTE>& frames);

  std::string trouble_;  // why it doesn't listen; empty when it does
  ListenerFormat format_;
  UINT32 bufferFrames_ = 0;
  ComPtr<IAudioClient> client_;
  ComPtr<IAudioCaptureClient> service_;
};

}  // namespace host
