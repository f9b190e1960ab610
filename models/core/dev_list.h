#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "json/forward.h"

namespace ZQ_RMT_MODELS {

// What identifies one device of a list.
class DevListEntry {
 public:
  std::u16string DeviceID;
  std::u16string DeviceInstanceID;
  std::u16string Name;
  std::u16string DUID;
  std::u16string Type;

  void Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
  static const json::RecordTable& Table();
};

// A list of devices. It is read whole and written a page at a time: the segment that CurrentIndex names.
class DevList {
 public:
  std::int32_t TotalCount = 0;     // as the host sent it, whatever the number of entries
  std::int32_t CurrentIndex = -1;  // counts segments, not entries; negative: no segment
  std::vector<DevListEntry> Segment;
  std::int32_t LIST_LENGTH = 20;  // entries of a full segment

  void Deserialize(const json::Value* value);
  // An empty object when CurrentIndex is negative.
  json::Serialized Serialize(json::Document* inComingDoc) const;
  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
