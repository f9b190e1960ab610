#include "models/devices/video_data.h"

#include "json/member_kinds.h"

namespace ZQ_RMT_MODELS {
namespace {

constexpr json::Field kFields[] = {
    json::row<&VideoData::DesiredResolution>(u"DesiredResolution", {.id = 8501}),
    json::row<&VideoData::VideoMemory>(u"VideoMemory",
                                       {.id = 8501, .showsValue = false, .note = "the line carries no value"}),
};
constexpr json::RecordTable kTable = json::Table({.name = "VideoData", .fields = kFields, .completeId = 8502});

}  // namespace

const json::RecordTable& VideoData::Table() { return kTable; }

}  // namespace ZQ_RMT_MODELS
