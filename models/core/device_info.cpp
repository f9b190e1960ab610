#include "models/core/device_info.h"

#include "json/member_kinds.h"

namespace ZQ_RMT_MODELS {
namespace {

constexpr json::Field kFields[] = {
    json::row<&DeviceInfo::DeviceID>(u"DeviceID", {.id = 7901}),
    json::row<&DeviceInfo::DeviceInstanceID>(u"DeviceInstanceID", {.id = 7902}),
    json::row<&DeviceInfo::Name>(u"Name", {.id = 7903}),
    json::row<&DeviceInfo::DUID>(u"DUID", {.id = 7904}),
    json::row<&DeviceInfo::Type>(u"Type", {.id = 7905}),
    json::row<&DeviceInfo::AudioData>(u"AudioData", {.id = 7918, .line = "No Audio Data to set."}),
};
constexpr json::RecordTable kTable = json::Table({.name = "DeviceInfo", .fields = kFields, .completeId = 7919});

}  // namespace

void DeviceInfo::Deserialize(const json::Value* value) {
  json::ReadRecord(kTable, this, value);
}

json::Serialized DeviceInfo::Serialize(json::Document* inComingDoc) const {
  return json::WriteRecord(kTable, this, inComingDoc);
}

}  // namespace ZQ_RMT_MODELS
