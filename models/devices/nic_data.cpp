#include "models/devices/nic_data.h"

#include "json/member_kinds.h"

namespace ZQ_RMT_MODELS {
namespace {

// One record reads all elements and isn't reset in between, so an element that lacks a key gets the value of the
// element before it.
json::ReadResult ReadAccessPoints(const json::Reading& reading, void* target) {
  if (reading.member == nullptr || !reading.member->IsArray()) return json::ReadResult::kNothing;
  auto& points = *static_cast<std::vector<AccessPointData>*>(target);
  points.clear();
  points.reserve(reading.member->Size());
  AccessPointData point;
  for (const json::Value& element : reading.member->GetArray()) {
    point.Deserialize(element.IsObject() ? &element : nullptr);
    points.push_back(point);
  }
  return json::ReadResult::kStored;
}

using AccessPoints = json::KindOf<std::vector<AccessPointData>>;
constexpr json::Kind kAccessPoints = {.read = ReadAccessPoints,
                                      .write = AccessPoints::Write,
                                      .name = "list of records",
                                      .record = AccessPointData::Table};

constexpr json::Field kAccessPointDataFields[] = {
    json::row<&AccessPointData::NICAccessPointName>(u"NICAccessPointName"),
    json::row<&AccessPointData::NICAccessPointPassword>(u"NICAccessPointPassword"),
    json::row<&AccessPointData::NICIsAccessPointSecured>(u"NICIsAccessPointSecured"),
};
constexpr json::RecordTable kAccessPointDataTable =
    json::Table({.name = "AccessPointData", .fields = kAccessPointDataFields, .logsSerializeEntry = false});

constexpr json::Field kNICDataFields[] = {
    json::row<&NICData::NICWmiIndexNumber>(u"NICWmiIndexNumber"),
    json::row<&NICData::NICIrqNumber>(u"NICIrqNumber"),
    json::row<&NICData::NICType>(u"NICType", {.written = false}),
    json::row<&NICData::NICDeviceDescription>(u"NICDeviceDescription"),
    json::row<&NICData::NICAccessPoints, kAccessPoints>(
        u"NICAccessPoints", {.note = "an element that lacks a key has the value of the element before it"}),
};
constexpr json::RecordTable kNICDataTable =
    json::Table({.name = "NICData", .fields = kNICDataFields, .completeId = 774});

}  // namespace

const json::RecordTable& AccessPointData::Table() { return kAccessPointDataTable; }

const json::RecordTable& NICData::Table() { return kNICDataTable; }

}  // namespace ZQ_RMT_MODELS
