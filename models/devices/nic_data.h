#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "json/forward.h"

namespace ZQ_RMT_MODELS {

// A wireless access point that a network adapter is to join.
class AccessPointData {
 public:
  std::u16string NICAccessPointName;
  std::u16string NICAccessPointPassword;  // plain text
  bool NICIsAccessPointSecured = false;

  void Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
  static const json::RecordTable& Table();
};

// A network adapter.
class NICData {
 public:
  std::int32_t NICWmiIndexNumber = -1;
  std::int32_t NICIrqNumber = -1;
  std::int32_t NICType = 0;
  std::u16string NICDeviceDescription;
  std::vector<AccessPointData> NICAccessPoints;

  void Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
