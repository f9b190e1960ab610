#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "json/forward.h"
#include "models/devices/image_table.h"

namespace ZQ_RMT_MODELS {

// The Identify Controller data structure of an NVMe disk (CNS 01h), byte for byte as the NVM Express Base
// Specification, revision 1.4, publishes it. The source has the fields with their units.
struct NVME_IDENTIFY_CONTROLLER_DATA_STRUCT {
  std::array<std::uint8_t, 4096> bytes{};

  void Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
  static std::span<const ImageField> Fields();
};
static_assert(sizeof(NVME_IDENTIFY_CONTROLLER_DATA_STRUCT) == 4096);

}  // namespace ZQ_RMT_MODELS
