#pragma once

#include <string>

#include "json/forward.h"
#include "json/text_map.h"

namespace ZQ_RMT_MODELS {

// A key of the registry and values in it.
class RegistryAccessData {
 public:
  std::u16string PathName;
  json::TextMap RegistryData;  // by name; reading adds to it

  void Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
