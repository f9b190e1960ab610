#pragma once

#include <string>

#include "json/record.h"

namespace ZQ_RMT_MODELS {

// A camera. If the record is null, it is read from the device record around it instead, which has the key too.
class CameraData : public json::Record<CameraData> {
 public:
  std::u16string DeviceDescription;

  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
