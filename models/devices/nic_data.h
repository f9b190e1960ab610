#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "json/record.h"

namespace ZQ_RMT_MODELS {

// A wireless access point for a network adapter to join.
class AccessPointData : public json::Record<AccessPointData> {
 public:
  std::u16string NICAccessPointName;
  std::u16string NICAccessPointPassword;  // in plain text, in the contract and in replies
  bool NICIsAccessPointSecured = false;

  static const json::RecordTable& Table();
};

// A network adapter. -1 stands for not set.
class NICData : public json::Record<NICData> {
 public:
  std::int32_t NICWmiIndexNumber = -1;
  std::int32_t NICIrqNumber = -1;
  std::int32_t NICType = 0;  // read but never written
  std::u16string NICDeviceDescription;
  std::vector<AccessPointData> NICAccessPoints;

  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
