#pragma once

#include <string>

#include "json/record.h"
#include "json/text_map.h"

namespace ZQ_RMT_MODELS {

// A key of the registry and values in it.
class RegistryAccessData : public json::Record<RegistryAccessData> {
 public:
  std::u16string PathName;
  json::TextMap RegistryData;  // by name; reading adds to it

  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
