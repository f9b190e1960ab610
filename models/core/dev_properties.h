#pragma once

#include <memory>
#include <string>
#include <vector>

#include "json/forward.h"
#include "models/core/property_set.h"

namespace ZQ_RMT_MODELS {

// One named property of a device, with one value or several.
class DevProp {
 public:
  std::u16string Name;
  std::u16string Type;
  std::vector<std::u16string> ValueArray;
  bool IsArray = false;

  // Resets the record, reads it, and returns the same as the entry of a PropertySet: there, what `value` lacks is
  // "empty".
  PropValue Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
  static const json::RecordTable& Table();
};

// A device's properties.
class DevProperties {
 public:
  std::vector<DevProp> Properties;

  // Adds what `value` holds to the properties that are there, and returns the same as a set for lookup by name.
  std::unique_ptr<PropertySet> Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
