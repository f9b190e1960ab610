#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "json/forward.h"
#include "models/devices/image_table.h"

namespace ZQ_RMT_MODELS {

// The SMART / Health Information log page of an NVMe disk (Log Identifier 02h), byte for byte as the NVM Express Base
// Specification, revision 1.4, publishes it. The source has the fields with their units.
struct NVME_HEALTH_INFO_LOG_STRUCT {
  std::array<std::uint8_t, 512> bytes{};

  void Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
  static std::span<const ImageField> Fields();
};
static_assert(sizeof(NVME_HEALTH_INFO_LOG_STRUCT) == 512);

}  // namespace ZQ_RMT_MODELS
