#pragma once

#include <cstdint>
#include <string>

#include "json/forward.h"

namespace ZQ_RMT_MODELS {

// How far a task has come. The times are texts in whatever form the host uses.
class StateInfo {
 public:
  std::int32_t Progress = 0;  // percent
  std::u16string State;
  std::u16string StartTime;
  std::u16string PollingTime;

  void Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
