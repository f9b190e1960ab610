#include "models/devices/video_data.h"

#include "json/member_kinds.h"

namespace ZQ_RMT_MODELS {
namespace {

constexpr json::Field kVideoDataFields[] = {
    json::row<&VideoData::DesiredResolution>(u"DesiredResolution", {.id = 8501}),
    json::row<&VideoData::VideoMemory>(u"VideoMemory",
                                       {.id = 8501, .showsValue = false, .note = "the line carries no value"}),
};
constexpr json::RecordTable kVideoDataTable =
    json::Table({.name = "VideoData", .fields = kVideoDataFields, .completeId = 8502});

}  // namespace

const json::RecordTable& VideoData::Table() { return kVideoDataTable; }

}  // namespace ZQ_RMT_MODELS
