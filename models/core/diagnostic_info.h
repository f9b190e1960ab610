#pragma once

#include <string>
#include <vector>

#include "json/record.h"
#include "json/text_map.h"

namespace ZQ_RMT_MODELS {

// Result data of a diagnostic. On the wire it is an array of pairs (json::TextMap).
class DiagData {
 public:
  json::TextMap Pairs;

  // Adds the pairs of `value`, which has none unless it is an array.
  void Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
};

// A diagnostic and its results. Reading adds to the results that are there.
class DiagnosticInfo : public json::Record<DiagnosticInfo> {
 public:
  std::u16string DiagnosticName;
  std::u16string DiagnosticID;
  std::u16string DiagnosticActivationRequirement;
  std::u16string DiagnosticComponent;
  std::u16string DiagnosticDataType;
  std::vector<DiagData> DiagnosticData;

  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
