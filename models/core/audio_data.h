#pragma once

#include <cstdint>
#include <string>

#include "json/forward.h"

namespace ZQ_RMT_MODELS {

// What an audio test is told beside its device, and what it measured.
class AudioData {
 public:
  std::int32_t CommandExecuted = -1;  // travels through; the audio tests neither read nor change it
  double maxAmplitude = 0.0;          // the largest amplitude that the record test heard; full scale is 1.0
  std::u16string targetDevice;        // id of the render endpoint of the record test; empty: none

  void Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
