#include "models/devices/camera_data.h"

#include "json/member_kinds.h"

namespace ZQ_RMT_MODELS {
namespace {

constexpr json::Field kFields[] = {
    json::row<&CameraData::DeviceDescription>(u"DeviceDescription", {.id = 7401, .line = "Set DEVICE DESCRIPTION:"}),
};
constexpr json::RecordTable kTable = json::Table({.name = "CameraData", .fields = kFields, .completeId = 7402});

}  // namespace

const json::RecordTable& CameraData::Table() { return kTable; }

}  // namespace ZQ_RMT_MODELS
