#pragma once

#include <cstdint>
#include <string>

#include "json/record.h"

namespace ZQ_RMT_MODELS {

// What a host tells an audio test besides the device, and what the test measured.
class AudioData : public json::Record<AudioData> {
 public:
  std::int32_t CommandExecuted = -1;  // comes back as it was sent; the audio tests don't look at it
  double maxAmplitude = 0.0;          // the largest amplitude that the record test captured; full scale is 1.0
  std::u16string targetDevice;        // the id of the render endpoint of the record test; empty for none

  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
