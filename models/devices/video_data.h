#pragma once

#include <cstdint>
#include <string>

#include "json/record.h"

namespace ZQ_RMT_MODELS {

// A graphics adapter.
class VideoData : public json::Record<VideoData> {
 public:
  std::u16string DesiredResolution;
  std::int32_t VideoMemory = 0;  // the wire names no unit

  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
