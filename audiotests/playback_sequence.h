#pragma once

#include <memory>
#include <string>

#include "audiotests/module_logger.h"
#include "models/core/rmt_data_contract.h"

namespace ZQ_RMT_TESTS_AUDIO {

// The playback test: plays a tone on the render endpoint that the contract's DeviceInfo names. It passes when the tone
// has played out and no platform call has failed.
class AudioPlaybackTestClass {
 public:
  // Runs the test that `text`, a contract in JSON, asks for. Returns the same contract with the outcome filled in, a
  // text that the caller releases with free; null if there is no memory for it. Raises the filesystem_error of a
  // failing log probe.
  char16_t* RunAudioPlaybackTest(const char16_t* text);

 private:
  void RunContract(const char16_t* text);
  // Plays the tone on the endpoint and reports the pass. Throws the outcome code of a step that fails; what was changed
  // on the endpoint before that stays changed.
  void PlayAndReport(const std::u16string& renderName);

  logging::Logger* logger = CreateTestLogger();
  std::unique_ptr<ZQ_RMT_MODELS::RMTDataContract> contract;  // of the call in progress
};

}  // namespace ZQ_RMT_TESTS_AUDIO
