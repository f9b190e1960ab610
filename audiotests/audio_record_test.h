#pragma once

#include <memory>
#include <string>

#include "audiotests/test_object.h"

namespace ZQ_RMT_TESTS_AUDIO {

// The record test: captures from the endpoint that the contract's device names, while a tone plays on the contract's
// target device when there is one, and reports the largest amplitude. It measures, and leaves the judging to the host.
class AudioRecordTestClass {
 public:
  AudioRecordTestClass();

  // Runs the test that the JSON text in `text` asks for, and returns the reply: the same contract with the outcome,
  // which the host releases with free; null when there is no memory for it. Raises the filesystem_error of a failing
  // log probe.
  char16_t* RunAudioRecordTest(const char16_t* text);

  // Captures from `captureName` and puts the largest absolute sample into maxAmplitude, as a share of full scale. With
  // an empty `renderName` it listens for three seconds. True at the end of the sequence; false when a step failed,
  // which is reported: what had been changed on the endpoints by then stays changed.
  bool RecordAndMeasure(std::u16string captureName, std::u16string renderName);

 private:
  void RunContract(const char16_t* text);
  void LogStage(const char* stage);
  void LogProgressMark(double percent);

  logging::Logger* logger;
  std::unique_ptr<ZQ_RMT_MODELS::RMTDataContract> contract;  // of the call in progress
  std::u16string captureName;
  std::u16string renderName;
};

}  // namespace ZQ_RMT_TESTS_AUDIO
