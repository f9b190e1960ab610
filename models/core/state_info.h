#pragma once

#include <cstdint>
#include <string>

#include "json/record.h"

namespace ZQ_RMT_MODELS {

// How far a task has come. The times are texts in whatever form the host uses.
class StateInfo : public json::Record<StateInfo> {
 public:
  std::int32_t Progress = 0;  // percent
  std::u16string State;
  std::u16string StartTime;
  std::u16string PollingTime;

  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
