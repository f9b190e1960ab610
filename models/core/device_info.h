#pragma once

#include <memory>
#include <string>

#include "json/forward.h"
#include "models/core/audio_data.h"

namespace ZQ_RMT_MODELS {

// The device that a task is about: what identifies it, and one nested record for each family of devices.
class DeviceInfo {
 public:
  std::u16string DeviceID;
  std::u16string DeviceInstanceID;  // the render endpoint of the playback test, the capture endpoint of the record test
  std::u16string Name;
  std::u16string DUID;
  std::u16string Type;
  std::unique_ptr<ZQ_RMT_MODELS::AudioData> AudioData;

  void Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
};

}  // namespace ZQ_RMT_MODELS
