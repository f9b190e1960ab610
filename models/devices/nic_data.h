#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "json/forward.h"

namespace ZQ_RMT_MODELS {

// A wireless access point for a network adapter to join.
class AccessPointData {
 public:
  std::u16string NICAccessPointName;
  std::u16string NICAccessPointPassword;  // in plain text, in the contract and in replies
  bool NICIsAccessPointSecured = false;

  void Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
  static const json::RecordTable& Table();
};

// A network adapter. -1 stands for not set.
class NICData {
 public:
  std::int32_t NICWmiIndexNumber = -1;
  std::int32_t NICIrqNumber = -1;
  std::int32_t NICType = 0;  // read but never written
  std::u16string NICDeviceDescription;
  std::vector<AccessPointData> NICAccessPoints;

  void Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
