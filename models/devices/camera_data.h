#pragma once

#include <string>

#include "json/forward.h"

namespace ZQ_RMT_MODELS {

// A camera. If the record is null, it is read from the device record around it instead, which has the key too.
class CameraData {
 public:
  std::u16string DeviceDescription;

  void Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
