#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "json/record.h"

namespace ZQ_RMT_MODELS {

// What a battery reports about itself. The units are those that the Smart Battery Data Specification, revision 1.1,
// gives the values of these names.
class BatteryDiagsProperties {
 public:
  // Capacities in mAh, or in units of 10 mWh if the battery's mode says so.
  std::uint16_t DesignCapacity = 0;
  std::uint16_t FullChargeCapacity = 0;
  std::uint16_t RemainingCapacity = 0;
  std::uint16_t MaxError = 0;       // the margin of error of the state of charge, in percent
  std::uint16_t CycleCount = 0;     // charge and discharge cycles so far
  std::uint16_t Temperature = 0;    // 0.1 K
  std::uint16_t Voltage = 0;        // mV
  std::uint16_t Current = 0;        // mA; signed there, but a negative number isn't read here
  std::uint16_t DesignVoltage = 0;  // mV
  std::uint16_t StatusWord = 0;     // the bits of BatteryStatus
  // Of the single cells, which that specification leaves to the manufacturer.
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

// The state and the settings of the charging system. None of them has a unit or a list of values on the wire.
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
class BatteryData : public json::Record<BatteryData> {
 public:
  std::int32_t BatteryIndex = 0;
  std::unique_ptr<ZQ_RMT_MODELS::BatteryResultDetails> BatteryResultDetails;
  std::unique_ptr<ZQ_RMT_MODELS::BatteryDiagsProperties> BatteryDiagsProperties;
  std::unique_ptr<ZQ_RMT_MODELS::BatteryDiagsVariables> BatteryDiagsVariables;

  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
