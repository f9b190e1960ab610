#include "models/devices/battery_data.h"

#include "json/member_kinds.h"

namespace ZQ_RMT_MODELS {
namespace {

constexpr json::Field kBatteryDiagsPropertiesFields[] = {
    json::row<&BatteryDiagsProperties::DesignCapacity>(u"DesignCapacity",
                                                       {.id = 7201, .line = "Set m_designCapacity:"}),
    json::row<&BatteryDiagsProperties::FullChargeCapacity>(u"FullChargeCapacity",
                                                           {.id = 7201, .line = "Set m_fullChargeCapacity:"}),
    json::row<&BatteryDiagsProperties::RemainingCapacity>(u"RemainingCapacity",
                                                          {.id = 7201, .line = "Set m_remainingCapacity:"}),
    json::row<&BatteryDiagsProperties::MaxError>(u"MaxError", {.id = 7201, .line = "Set m_maxError:"}),
    json::row<&BatteryDiagsProperties::CycleCount>(u"CycleCount", {.id = 7201, .line = "Set m_cycleCount:"}),
    json::row<&BatteryDiagsProperties::Temperature>(u"Temperature", {.id = 7201, .line = "Set m_temperature:"}),
    json::row<&BatteryDiagsProperties::Voltage>(u"Voltage", {.id = 7201, .line = "Set m_voltage:"}),
    json::row<&BatteryDiagsProperties::Current>(u"Current", {.id = 7201, .line = "Set m_current:"}),
    json::row<&BatteryDiagsProperties::DesignVoltage>(u"DesignVoltage", {.id = 7201, .line = "Set m_designVoltage:"}),
    json::row<&BatteryDiagsProperties::StatusWord>(u"StatusWord", {.id = 7201, .line = "Set m_statusWord:"}),
    json::row<&BatteryDiagsProperties::CellVoltage1>(u"CellVoltage1", {.id = 7201, .line = "Set m_cellVoltage1:"}),
    json::row<&BatteryDiagsProperties::CellVoltage2>(u"CellVoltage2", {.id = 7201, .line = "Set m_cellVoltage2:"}),
    json::row<&BatteryDiagsProperties::CellVoltage3>(u"CellVoltage3", {.id = 7201, .line = "Set m_cellVoltage3:"}),
    json::row<&BatteryDiagsProperties::CellVoltage4>(u"CellVoltage4", {.id = 7201, .line = "Set m_cellVoltage4:"}),
    json::row<&BatteryDiagsProperties::Manufacturer>(u"Manufacturer", {.id = 7201, .line = "Set m_manufacturer:"}),
    json::row<&BatteryDiagsProperties::SerialNumber>(u"SerialNumber", {.id = 7201, .line = "Set m_serialNumber:"}),
    json::row<&BatteryDiagsProperties::CTLabel>(u"CTLabel", {.id = 7201, .line = "Set m_cTLabel:"}),
};
constexpr json::RecordTable kBatteryDiagsPropertiesTable =
    json::Table({.name = "BatteryDiagsProperties", .fields = kBatteryDiagsPropertiesFields});

constexpr json::Field kBatteryDiagsVariablesFields[] = {
    json::row<&BatteryDiagsVariables::WarrantyLength>(u"WarrantyLength", {.id = 7201}),
    json::row<&BatteryDiagsVariables::CalibrationType>(u"CalibrationType", {.id = 7201}),
    json::row<&BatteryDiagsVariables::SystemBatterySupport>(u"SystemBatterySupport", {.id = 7201}),
    json::row<&BatteryDiagsVariables::BatteryCount>(u"BatteryCount", {.id = 7201}),
    json::row<&BatteryDiagsVariables::ChargeControlSupported>(u"ChargeControlSupported", {.id = 7201}),
    json::row<&BatteryDiagsVariables::ACPowerOn>(u"ACPowerOn", {.id = 7201}),
    json::row<&BatteryDiagsVariables::ChargeTempOk>(u"ChargeTempOk", {.id = 7201}),
    json::row<&BatteryDiagsVariables::ChargeTest>(u"ChargeTest", {.id = 7201}),
    json::row<&BatteryDiagsVariables::ChargeCapacity>(u"ChargeCapacity", {.id = 7201}),
    json::row<&BatteryDiagsVariables::TempAlarm>(u"TempAlarm", {.id = 7201}),
    json::row<&BatteryDiagsVariables::DeepDischarge>(u"DeepDischarge", {.id = 7201}),
    json::row<&BatteryDiagsVariables::FullCharge>(u"FullCharge", {.id = 7201}),
    json::row<&BatteryDiagsVariables::FullChargeStatus>(u"FullChargeStatus", {.id = 7201}),
    json::row<&BatteryDiagsVariables::ACAdapterOK>(u"ACAdapterOK", {.id = 7201}),
    json::row<&BatteryDiagsVariables::BatteryCharge>(u"BatteryCharge", {.id = 7201}),
    json::row<&BatteryDiagsVariables::DesignCycleCount>(u"DesignCycleCount", {.id = 7201}),
    json::row<&BatteryDiagsVariables::LowVoltageDisable>(u"LowVoltageDisable", {.id = 7201}),
    json::row<&BatteryDiagsVariables::AdaptiveBatteryOptimizer>(u"AdaptiveBatteryOptimizer", {.id = 7201}),
    json::row<&BatteryDiagsVariables::Batt_LTemp>(u"Batt_LTemp", {.id = 7201}),
    json::row<&BatteryDiagsVariables::NonZQBatteryDetection>(u"NonZQBatteryDetection", {.id = 7201}),
    json::row<&BatteryDiagsVariables::RecalledBatteryDetection>(u"RecalledBatteryDetection", {.id = 7201}),
    json::row<&BatteryDiagsVariables::BatteryHealthManagerSetting>(u"BatteryHealthManagerSetting", {.id = 7201}),
    json::row<&BatteryDiagsVariables::BatteryCareFunctionSetting>(u"BatteryCareFunctionSetting", {.id = 7201}),
    json::row<&BatteryDiagsVariables::AcAdapterType>(u"AcAdapterType", {.id = 7201}),
    json::row<&BatteryDiagsVariables::BatteryHealthManagerStr>(u"BatteryHealthManagerStr", {.id = 7201}),
};
constexpr json::RecordTable kBatteryDiagsVariablesTable =
    json::Table({.name = "BatteryDiagsVariables", .fields = kBatteryDiagsVariablesFields});

constexpr json::Field kBatteryResultDetailsFields[] = {
    json::row<&BatteryResultDetails::DeviceInstance>(u"DeviceInstance", {.id = 7201}),
    json::row<&BatteryResultDetails::OverallTestResult>(u"OverallTestResult", {.id = 7201}),
    json::row<&BatteryResultDetails::LogicTestResult>(u"LogicTestResult", {.id = 7201}),
    json::row<&BatteryResultDetails::ChargeTestResult>(u"ChargeTestResult", {.id = 7201}),
};
constexpr json::RecordTable kBatteryResultDetailsTable =
    json::Table({.name = "BatteryResultDetails", .fields = kBatteryResultDetailsFields});

constexpr json::Field kBatteryDataFields[] = {
    json::row<&BatteryData::BatteryIndex>(u"BatteryIndex", {.id = 7605, .line = "Set m_batteryIndex:"}),
    json::row<&BatteryData::BatteryResultDetails>(u"BatteryResultDetails",
                                                  {.id = 7610, .line = "No m_batteryResultDetails to set."}),
    json::row<&BatteryData::BatteryDiagsProperties>(u"BatteryDiagsProperties",
                                                    {.id = 7610, .line = "No m_batteryDiagsProperties to set."}),
    json::row<&BatteryData::BatteryDiagsVariables>(u"BatteryDiagsVariables",
                                                   {.id = 7610, .line = "No m_batteryDiagsVariables to set."}),
};
constexpr json::RecordTable kBatteryDataTable = json::Table({.name = "BatteryData", .fields = kBatteryDataFields});

}  // namespace

void BatteryDiagsProperties::Deserialize(const json::Value* value) {
  json::ReadRecord(kBatteryDiagsPropertiesTable, this, value);
}

json::Serialized BatteryDiagsProperties::Serialize(json::Document* inComingDoc) const {
  return json::WriteRecord(kBatteryDiagsPropertiesTable, this, inComingDoc);
}

const json::RecordTable& BatteryDiagsProperties::Table() { return kBatteryDiagsPropertiesTable; }

void BatteryDiagsVariables::Deserialize(const json::Value* value) {
  json::ReadRecord(kBatteryDiagsVariablesTable, this, value);
}

json::Serialized BatteryDiagsVariables::Serialize(json::Document* inComingDoc) const {
  return json::WriteRecord(kBatteryDiagsVariablesTable, this, inComingDoc);
}

const json::RecordTable& BatteryDiagsVariables::Table() { return kBatteryDiagsVariablesTable; }

void BatteryResultDetails::Deserialize(const json::Value* value) {
  json::ReadRecord(kBatteryResultDetailsTable, this, value);
}

json::Serialized BatteryResultDetails::Serialize(json::Document* inComingDoc) const {
  return json::WriteRecord(kBatteryResultDetailsTable, this, inComingDoc);
}

const json::RecordTable& BatteryResultDetails::Table() { return kBatteryResultDetailsTable; }

const json::RecordTable& BatteryData::Table() { return kBatteryDataTable; }

}  // namespace ZQ_RMT_MODELS
