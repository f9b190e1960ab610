#pragma once

#include <string>
#include <vector>

#include "json/forward.h"
#include "json/text_map.h"

namespace ZQ_RMT_MODELS {

// Result data of a diagnostic, an array of pairs on the wire.
class DiagData {
 public:
  json::TextMap Pairs;

  // Adds the pairs of `value`; any other value than an array has none.
  void Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
};

// A diagnostic, and its results.
class DiagnosticInfo {
 public:
  std::u16string DiagnosticName;
  std::u16string DiagnosticID;
  std::u16string DiagnosticActivationRequirement;
  std::u16string DiagnosticComponent;
  std::u16string DiagnosticDataType;
  std::vector<DiagData> DiagnosticData;

  void Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
