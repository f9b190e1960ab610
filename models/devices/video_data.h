#pragma once

#include <cstdint>
#include <string>

#include "json/forward.h"

namespace ZQ_RMT_MODELS {

// A graphics adapter.
class VideoData {
 public:
  std::u16string DesiredResolution;
  std::int32_t VideoMemory = 0;  // the wire names no unit

  void Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
