#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "json/forward.h"

namespace ZQ_RMT_MODELS {

// What a battery reports of itself.
class BatteryDiagsProperties {
 public:
  std::uint16_t DesignCapacity = 0;
  std::uint16_t FullChargeCapacity = 0;
  std::uint16_t RemainingCapacity = 0;
  std::uint16_t MaxError = 0;
  std::uint16_t CycleCount = 0;
  std::uint16_t Temperature = 0;
  std::uint16_t Voltage = 0;
  std::uint16_t Current = 0;
  std::uint16_t DesignVoltage = 0;
  std::uint16_t StatusWord = 0;
  std::uint16_t CellVoltage1 = 0;
  std::uint16_t CellVoltage2 = 0;
  std::uint16_t CellVoltage3 = 0;
  std::uint16_t CellVoltage4 = 0;
  std::u16string Manufacturer;
  std::u16string SerialNumber;
  std::u16string CTLabel;

  void Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
  static const json::RecordTable& Table();
};

// The state and the settings of the charging system around a battery.
class BatteryDiagsVariables {
 public:
  std::uint16_t WarrantyLength = 0;
  std::uint16_t CalibrationType = 0;
  std::uint32_t SystemBatterySupport = 0;
  std::uint16_t BatteryCount = 0;
  std::int16_t ChargeControlSupported = 0;
  bool ACPowerOn = false;
  bool ChargeTempOk = false;
  bool ChargeTest = false;
  std::uint16_t ChargeCapacity = 0;
  bool TempAlarm = false;
  bool DeepDischarge = false;
  bool FullCharge = false;
  bool FullChargeStatus = false;
  bool ACAdapterOK = false;
  bool BatteryCharge = false;
  std::uint16_t DesignCycleCount = 0;
  bool LowVoltageDisable = false;
  std::u16string AdaptiveBatteryOptimizer;
  bool Batt_LTemp = false;
  std::uint32_t NonZQBatteryDetection = 0;
  std::uint32_t RecalledBatteryDetection = 0;
  std::uint32_t BatteryHealthManagerSetting = 0;
  std::int32_t BatteryCareFunctionSetting = 0;
  std::u16string AcAdapterType;
  std::u16string BatteryHealthManagerStr;

  void Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
  static const json::RecordTable& Table();
};

// The results of a battery test.
class BatteryResultDetails {
 public:
  std::uint32_t DeviceInstance = 0;
  std::uint32_t OverallTestResult = 0;
  std::uint32_t LogicTestResult = 0;
  std::uint32_t ChargeTestResult = 0;

  void Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
  static const json::RecordTable& Table();
};

// One battery.
class BatteryData {
 public:
  std::int32_t BatteryIndex = 0;
  std::unique_ptr<ZQ_RMT_MODELS::BatteryResultDetails> BatteryResultDetails;
  std::unique_ptr<ZQ_RMT_MODELS::BatteryDiagsProperties> BatteryDiagsProperties;
  std::unique_ptr<ZQ_RMT_MODELS::BatteryDiagsVariables> BatteryDiagsVariables;

  void Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
