#pragma once

#include <memory>
#include <string>

#include "audiotests/module_logger.h"
#include "models/core/rmt_data_contract.h"

namespace ZQ_RMT_TESTS_AUDIO {

// The record test: captures from the endpoint that the contract's DeviceInfo names, while a tone plays on the target
// device of its AudioData if that names one, and stores the largest amplitude. It measures; the host judges.
class AudioRecordTestClass {
 public:
  // Runs the test that `text`, a contract in JSON, asks for. Returns the same contract with the outcome filled in, a
  // text that the caller releases with free; null if there is no memory for it. Raises the filesystem_error of a
  // failing log probe.
  char16_t* RunAudioRecordTest(const char16_t* text);

  // The sequence on the contract of the call in progress: captures from `captureName` while the tone plays on
  // `renderName`, or for three seconds if that is empty, and puts the largest absolute sample into maxAmplitude, full
  // scale being 1.0. Returns true at its end. If a step fails, reports its outcome and returns false; what was changed
  // on the endpoints before that stays changed.
  bool RecordAndMeasure(std::u16string captureName, std::u16string renderName);

 private:
  void RunContract(const char16_t* text);
  void LogStage(const char* stage);
  void LogProgressMark(double percent);

  logging::Logger* logger = CreateTestLogger();
  std::unique_ptr<ZQ_RMT_MODELS::RMTDataContract> contract;  // of the call in progress
  std::u16string captureName;
  std::u16string renderName;
};

}  // namespace ZQ_RMT_TESTS_AUDIO
