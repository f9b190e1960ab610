#include "models/devices/motherboard_data.h"

#include "json/member_kinds.h"

namespace ZQ_RMT_MODELS {
namespace {

constexpr json::ListLines kTemperatureLines = {"Serialize Temperature Data Array",
                                               "TemperatureData.size():", "Serialized Properties Array"};
constexpr json::ListLines kFanLines = {"Serialize Fan Data Array", "FanData.size():", "Serialized Properties Array"};
constexpr json::ListLines kSensorLines = {"Serialize Sensor Data Array",
                                          "SensorData.size():", "Serialized Properties Array"};

constexpr json::Field kTemperatureZoneDataFields[] = {
    json::row<&TemperatureZoneData::ZoneName>(u"ZoneName"),
    json::row<&TemperatureZoneData::ZoneIndex>(
        u"ZoneIndex", {.id = 8001, .line = "Set ZoneTemperature:", .note = "the line has the label of the next key"}),
    json::row<&TemperatureZoneData::ZoneTemperature>(u"ZoneTemperature", {.id = 8002}),
    json::row<&TemperatureZoneData::CurrentTempUnit>(u"CurrentTempUnit", {.id = 8003}),
};
constexpr json::RecordTable kTemperatureZoneDataTable =
    json::Table({.name = "TemperatureZoneData", .fields = kTemperatureZoneDataFields});

constexpr json::Field kFanDataFields[] = {
    json::row<&FanData::FanName>(u"FanName"),
    json::row<&FanData::FanSpeed>(u"FanSpeed", {.id = 8004}),
    json::row<&FanData::CurrentSpeedUnit>(u"CurrentSpeedUnit", {.id = 8005}),
};
constexpr json::RecordTable kFanDataTable =
    json::Table({.name = "FanData", .fields = kFanDataFields, .logsDeserializeEntry = false});

constexpr json::Field kSensorDataClassFields[] = {
    json::row<&SensorDataClass::SensorCategory>(u"SensorCategory"),
    json::row<&SensorDataClass::SensorType>(u"SensorType"),
    json::row<&SensorDataClass::SensorID>(u"SensorID"),
    json::row<&SensorDataClass::FriendlyName>(u"FriendlyName"),
    json::row<&SensorDataClass::SensorStateEnum>(u"SensorStateEnum", {.id = 8006}),
};
constexpr json::RecordTable kSensorDataClassTable =
    json::Table({.name = "SensorDataClass", .fields = kSensorDataClassFields});

constexpr json::Field kMotherboardDataFields[] = {
    json::row<&MotherboardData::TemperatureData>(u"TemperatureData", {.appends = true, .list = &kTemperatureLines}),
    json::row<&MotherboardData::FanData>(u"FanData", {.appends = true, .list = &kFanLines}),
    json::row<&MotherboardData::SensorData>(u"SensorData", {.appends = true, .list = &kSensorLines}),
    json::row<&MotherboardData::KorvGpuIds>(u"KorvGpuIds"),
    json::row<&MotherboardData::KorvGpuTemps>(u"KorvGpuTemps"),
    json::row<&MotherboardData::KorvCpuTemp>(u"KorvCpuTemp"),
    json::row<&MotherboardData::KorvTargetThermalProfile>(u"KorvTargetThermalProfile"),
    json::row<&MotherboardData::KorvTargetThermalProfileSet>(u"KorvTargetThermalProfileSet"),
};
constexpr json::RecordTable kMotherboardDataTable =
    json::Table({.name = "MotherboardData", .fields = kMotherboardDataFields, .completeId = 775});

}  // namespace

void TemperatureZoneData::Deserialize(const json::Value* value) {
  json::ReadRecord(kTemperatureZoneDataTable, this, value);
}

json::Serialized TemperatureZoneData::Serialize(json::Document* inComingDoc) const {
  return json::WriteRecord(kTemperatureZoneDataTable, this, inComingDoc);
}

const json::RecordTable& TemperatureZoneData::Table() { return kTemperatureZoneDataTable; }

const json::RecordTable& FanData::Table() { return kFanDataTable; }

const json::RecordTable& SensorDataClass::Table() { return kSensorDataClassTable; }

const json::RecordTable& MotherboardData::Table() { return kMotherboardDataTable; }

}  // namespace ZQ_RMT_MODELS
