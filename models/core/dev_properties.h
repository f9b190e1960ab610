#pragma once

#include <memory>
#include <string>
#include <vector>

#include "json/forward.h"
#include "models/core/property_set.h"

namespace ZQ_RMT_MODELS {

// A named property of a device, with one value or several.
class DevProp {
 public:
  std::u16string Name;
  std::u16string Type;
  std::vector<std::u16string> ValueArray;
  bool IsArray = false;

  // Resets the record and reads it. Returns the same property as the entry of a PropertySet, in which whatever `value`
  // lacks is the text "empty".
  PropValue Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
  static const json::RecordTable& Table();
};

// A device's properties.
class DevProperties {
 public:
  std::vector<DevProp> Properties;

  // Adds the properties of `value` to those that are there. Returns the ones that were added as a set for lookup by
  // name.
  std::unique_ptr<PropertySet> Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
