#include "models/core/device_info.h"

#include "json/access.h"
#include "json/member_kinds.h"
#include "logging/model_logger.h"

namespace ZQ_RMT_MODELS {
namespace {

using logging::GetModelLogger;
using Camera = json::KindOf<std::unique_ptr<CameraData>>;
using Storage = json::KindOf<std::unique_ptr<MassStorageData>>;

// For a camera record that is null, the camera's one key is read from the device record itself.
json::ReadResult ReadCamera(const json::Reading& reading, void* target) {
  if (reading.member == nullptr || !reading.member->IsNull()) return Camera::Read(reading, target);
  const json::Value* const description = json::FindMember(reading.object, u"DeviceDescription");
  if (description == nullptr || !description->IsString()) {
    GetModelLogger().LogDebug2(description == nullptr ? 7908 : 7907, "No CameraData to set.", 0.0);
    return json::ReadResult::kNothing;
  }
  auto camera = std::make_unique<CameraData>();
  camera->Deserialize(&reading.object);
  *static_cast<std::unique_ptr<CameraData>*>(target) = std::move(camera);
  return json::ReadResult::kStored;
}
constexpr json::Kind kCamera = {
    .read = ReadCamera, .write = Camera::Write, .name = Camera::kind.name, .record = CameraData::Table};

json::ReadResult ReadStorage(const json::Reading& reading, void* target) {
  if (reading.member == nullptr || (!reading.member->IsNull() && !reading.member->IsObject())) {
    return json::ReadResult::kNothing;
  }
  GetModelLogger().LogDebug2(7909, "Has member:JSON_HDD_HDDDATA", 0.0);
  if (reading.member->IsNull()) {
    json::LogNullRecord(reading.field);
    return json::ReadResult::kNothing;
  }
  GetModelLogger().LogDebug2(7910, "JSON_HDD_HDDDATA Value found.", 0.0);
  return Storage::Read(reading, target);
}
constexpr json::Kind kStorage = {
    .read = ReadStorage, .write = Storage::Write, .name = Storage::kind.name, .record = MassStorageData::Table};

// Several rows share an id. Log readers rely on the numbers as they are.
constexpr json::Field kDeviceInfoFields[] = {
    json::row<&DeviceInfo::DeviceID>(u"DeviceID", {.id = 7901}),
    json::row<&DeviceInfo::DeviceInstanceID>(u"DeviceInstanceID", {.id = 7902}),
    json::row<&DeviceInfo::Name>(u"Name", {.id = 7903}),
    json::row<&DeviceInfo::DUID>(u"DUID", {.id = 7904}),
    json::row<&DeviceInfo::Type>(u"Type", {.id = 7905}),
    json::row<&DeviceInfo::VideoData>(u"VideoData", {.id = 7906}),
    json::row<&DeviceInfo::CameraData, kCamera>(
        u"CameraData", {.note = "when null, DeviceDescription of this record, if it is a text, makes a camera record"}),
    json::row<&DeviceInfo::StorageData, kStorage>(u"StorageData", {.id = 7911, .line = "No HDDData to set."}),
    json::row<&DeviceInfo::CPUData>(u"CPUData", {.id = 7912}),
    json::row<&DeviceInfo::MotherboardData>(u"MotherboardData"),
    json::row<&DeviceInfo::DevList>(u"DevList", {.id = 7914}),
    json::row<&DeviceInfo::DevProperties>(u"DevProperties", {.id = 7915}),
    json::row<&DeviceInfo::RegistryAccessData>(u"RegistryAccessData",
                                               {.id = 7916, .line = "No Registry Access Data to set."}),
    json::row<&DeviceInfo::NICData>(u"NICData", {.id = 7917, .line = "No NIC Data to set."}),
    json::row<&DeviceInfo::AudioData>(u"AudioData", {.id = 7918, .line = "No Audio Data to set."}),
    json::row<&DeviceInfo::MouseData>(u"MouseData", {.id = 7918, .line = "No Mouse Data to set."}),
    json::row<&DeviceInfo::BatteryData>(u"BatteryData", {.id = 7918, .line = "No Battery Data to set."}),
    json::row<&DeviceInfo::KeyboardData>(u"KeyboardData"),
};
constexpr json::RecordTable kDeviceInfoTable =
    json::Table({.name = "DeviceInfo", .fields = kDeviceInfoFields, .completeId = 7919});

}  // namespace

const json::RecordTable& DeviceInfo::Table() { return kDeviceInfoTable; }

}  // namespace ZQ_RMT_MODELS
