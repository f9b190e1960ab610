#pragma once

#include <memory>

#include "audio/format_block.h"
#include "audiotests/test_object.h"

namespace ZQ_RMT_TESTS_AUDIO {

// The playback test: plays a tone on the render endpoint that the contract's device names. It passes when the tone has
// played out with no platform failure.
class AudioPlaybackTestClass {
 public:
  AudioPlaybackTestClass();

  // Runs the test that the JSON text in `text` asks for, and returns the reply: the same contract with the outcome,
  // which the host releases with free; null when there is no memory for it. Raises the filesystem_error of a failing
  // log probe.
  char16_t* RunAudioPlaybackTest(const char16_t* text);

 private:
  void RunContract(const char16_t* text);
  // Throws the outcome code of a step that fails. What had been changed on the endpoint by then stays changed.
  void Play(const std::u16string& renderName);

  audio::RenderFormatBlock renderFormat = audio::FixedTestFormat;
  logging::Logger* logger;
  std::unique_ptr<ZQ_RMT_MODELS::RMTDataContract> contract;  // of the call in progress
};

}  // namespace ZQ_RMT_TESTS_AUDIO
