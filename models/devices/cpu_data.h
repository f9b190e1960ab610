#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "json/record.h"

namespace ZQ_RMT_MODELS {

// A processor and a stress run on it. The wire names no unit of speeds and temperatures.
class CPUData : public json::Record<CPUData> {
 public:
  std::int32_t CoreCount = 0;
  std::vector<std::int32_t> CoreSpeed;
  std::u16string architecture;
  std::int32_t runType = 0;
  std::int32_t startingTemp = 0;
  float operationWeight = 0.0F;
  std::int32_t stressSeconds = 0;
  std::int32_t coolingSeconds = 0;
  // The course of the run.
  std::vector<std::int32_t> stressPercentages;
  std::vector<std::int32_t> operationsDone;
  std::vector<std::int32_t> operationTemps;
  float heatScore = 0.0F;
  std::int32_t averageTemp = 0;

  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
