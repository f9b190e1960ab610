#include "models/devices/camera_data.h"

#include "json/member_kinds.h"

namespace ZQ_RMT_MODELS {
namespace {

constexpr json::Field kCameraDataFields[] = {
    json::row<&CameraData::DeviceDescription>(u"DeviceDescription", {.id = 7401, .line = "Set DEVICE DESCRIPTION:"}),
};
constexpr json::RecordTable kCameraDataTable =
    json::Table({.name = "CameraData", .fields = kCameraDataFields, .completeId = 7402});

}  // namespace

const json::RecordTable& CameraData::Table() { return kCameraDataTable; }

}  // namespace ZQ_RMT_MODELS
