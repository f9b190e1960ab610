#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "json/record.h"

namespace ZQ_RMT_MODELS {

// One device of a list, with what identifies it.
class DevListEntry : public json::Record<DevListEntry> {
 public:
  std::u16string DeviceID;
  std::u16string DeviceInstanceID;
  std::u16string Name;
  std::u16string DUID;
  std::u16string Type;

  static const json::RecordTable& Table();
};

// A list of devices. Reading takes all entries; writing writes one segment of them, the one that CurrentIndex names.
class DevList {
 public:
  static constexpr std::int32_t LIST_LENGTH = 20;  // the entries of a full segment

  std::int32_t TotalCount = 0;     // as the host sent it, whatever the number of entries is
  std::int32_t CurrentIndex = -1;  // counts segments, not entries; negative for none
  std::vector<DevListEntry> Segment;

  void Deserialize(const json::Value* value);
  // An empty object if CurrentIndex is negative.
  json::Serialized Serialize(json::Document* inComingDoc) const;
  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
