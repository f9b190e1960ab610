#pragma once

#include <string>

#include "json/forward.h"
#include "json/text_map.h"

namespace ZQ_RMT_MODELS {

// A place in the registry, and values there.
class RegistryAccessData {
 public:
  std::u16string PathName;
  json::TextMap RegistryData;

  void Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
