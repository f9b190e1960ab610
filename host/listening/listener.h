#pragma once

#include <string>

#include "host/listening/captured_sound.h"
#include "platform/com_ptr.h"
#include "platform/core_audio.h"
#include "platform/sample_format.h"

namespace host {

// Listens to a capture endpoint along with the module: a second stream in shared mode, which changes neither the
// endpoint nor what the module captures. Nothing is read while it runs, so that it costs the thread nothing; what
// doesn't fit its buffer of ten seconds, or less where the system won't have that, isn't heard. The thread must stay on
// the platform.
class Listener {
 public:
  // Listens from now on to the active endpoint with exactly this id. Throws std::runtime_error with a sentence on why
  // that can't be.
  explicit Listener(const std::string& captureId);

  // Ends listening, releases all of the platform, and gives what was heard, with the frames themselves when `kept` asks
  // for them. Throws std::runtime_error like the constructor. Called once.
  CapturedSound Finish(Kept kept);

 private:
  void Open(IMMDevice& device);
  CapturedSound Drain(Kept kept);

  platform::SampleFormat format_;
  UINT32 bufferFrames_ = 0;
  ComPtr<IAudioClient> client_;
  ComPtr<IAudioCaptureClient> service_;
};

}  // namespace host
