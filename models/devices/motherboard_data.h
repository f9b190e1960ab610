#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "json/record.h"

namespace ZQ_RMT_MODELS {

// A temperature zone. -1 stands for not set, here and in the records below.
class TemperatureZoneData {
 public:
  std::u16string ZoneName;
  std::int32_t ZoneIndex = -1;
  std::int32_t ZoneTemperature = -1;
  std::int32_t CurrentTempUnit = -1;  // the sender's number for the unit of ZoneTemperature

  void Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
  static const json::RecordTable& Table();
};

// A fan.
class FanData : public json::Record<FanData> {
 public:
  std::u16string FanName;
  std::int32_t FanSpeed = -1;
  std::int32_t CurrentSpeedUnit = -1;  // the sender's number for the unit of FanSpeed

  static const json::RecordTable& Table();
};

// A sensor.
class SensorDataClass : public json::Record<SensorDataClass> {
 public:
  std::u16string SensorCategory;
  std::u16string SensorType;
  std::u16string SensorID;
  std::u16string FriendlyName;
  std::int32_t SensorStateEnum = -1;

  static const json::RecordTable& Table();
};

// A machine's temperatures, fans and sensors. Reading adds to the first three lists and replaces the others.
class MotherboardData : public json::Record<MotherboardData> {
 public:
  std::vector<TemperatureZoneData> TemperatureData;
  std::vector<ZQ_RMT_MODELS::FanData> FanData;
  std::vector<SensorDataClass> SensorData;
  std::vector<std::u16string> KorvGpuIds;
  std::vector<std::int32_t> KorvGpuTemps;
  std::int32_t KorvCpuTemp = 0;
  std::u16string KorvTargetThermalProfile;
  bool KorvTargetThermalProfileSet = false;

  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
