#pragma once

#include <string>

#include "json/forward.h"

namespace ZQ_RMT_MODELS {

// A camera.
class CameraData {
 public:
  std::u16string DeviceDescription;

  void Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
