#pragma once

#include <string>

#include "host/analysis/recording.h"
#include "platform/sample_format.h"

namespace host {

// Whether only the samples are kept of what is captured, or the frames too, byte for byte.
enum class Kept { kSamples, kFramesToo };

// What an endpoint captured.
struct CapturedSound {
  Recording recording;
  platform::SampleFormat format;
  std::string frames;  // in that format, interleaved; empty unless they were to be kept
};

}  // namespace host
