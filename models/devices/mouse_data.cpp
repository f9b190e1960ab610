#include "models/devices/mouse_data.h"

#include "json/member_kinds.h"

namespace ZQ_RMT_MODELS {
namespace {

// Unlike in the lists of numbers elsewhere, an element that is no integer of 32 bits isn't skipped but stored as 0.
// That goes for an integer beyond 32 bits too, which isn't cut to its low bits: one rule for all that doesn't fit.
json::ReadResult ReadNumbers(const json::Reading& reading, void* target) {
  if (reading.member == nullptr || !reading.member->IsArray()) return json::ReadResult::kNothing;
  auto& numbers = *static_cast<std::vector<std::int32_t>*>(target);
  numbers.clear();
  numbers.reserve(reading.member->Size());
  for (const json::Value& element : reading.member->GetArray()) {
    numbers.push_back(element.IsInt() ? element.GetInt() : 0);
  }
  return json::ReadResult::kStoredToLog;
}

constexpr const char* kNumbersNote = "an element of another kind gives 0";
using NumberList = json::KindOf<std::vector<std::int32_t>>;
constexpr json::Kind kNumbers = {
    .read = ReadNumbers, .write = NumberList::Write, .print = NumberList::Print, .name = NumberList::kind.name};

constexpr json::Field kBoundingRectangleFields[] = {
    json::row<&BoundingRectangle::Left>(u"Left", {.id = 7201}),
    json::row<&BoundingRectangle::Top>(u"Top", {.id = 7202}),
    json::row<&BoundingRectangle::Width>(u"Width", {.id = 7203}),
    json::row<&BoundingRectangle::Height>(u"Height", {.id = 7204}),
};
constexpr json::RecordTable kBoundingRectangleTable =
    json::Table({.name = "BoundingRectangle", .fields = kBoundingRectangleFields});

constexpr json::Field kButtonClickInfoFields[] = {
    json::row<&ButtonClickInfo::ButtonPressedCount>(u"ButtonPressedCount", {.id = 7901}),
    json::row<&ButtonClickInfo::ButtonName>(u"ButtonName", {.id = 7901}),
};
constexpr json::RecordTable kButtonClickInfoTable =
    json::Table({.name = "ButtonClickInfo", .fields = kButtonClickInfoFields, .completeId = 7919});

constexpr json::Field kMouseMotionDataFields[] = {
    json::row<&MouseMotionData::MotionController>(u"MotionController", {.id = 7901}),
    json::row<&MouseMotionData::SourceName>(u"SourceName", {.id = 7901}),
    json::row<&MouseMotionData::SourceID>(u"SourceID", {.id = 7901}),
    json::row<&MouseMotionData::SourceType>(u"SourceType", {.id = 7901}),
    json::row<&MouseMotionData::TargetName>(u"TargetName", {.id = 7901}),
    json::row<&MouseMotionData::TargetID>(u"TargetID", {.id = 7901}),
    json::row<&MouseMotionData::TargetType>(u"TargetType", {.id = 7901}),
    json::row<&MouseMotionData::SourceBoundingRect>(u"SourceBoundingRect", {.id = 7906}),
    json::row<&MouseMotionData::TargetBoundingRect>(u"TargetBoundingRect", {.id = 7906}),
};
constexpr json::RecordTable kMouseMotionDataTable =
    json::Table({.name = "MouseMotionData", .fields = kMouseMotionDataFields, .completeId = 7919});

constexpr json::Field kMouseDataFields[] = {
    json::row<&MouseData::NumberOfButtons>(u"NumberOfButtons", {.id = 7901}),
    json::row<&MouseData::PointingType>(u"PointingType", {.id = 7901}),
    json::row<&MouseData::ActionTaken>(u"ActionTaken", {.id = 7901}),
    json::row<&MouseData::CommandExecuted>(u"CommandExecuted", {.id = 7901}),
    json::row<&MouseData::EventRaised>(u"EventRaised", {.id = 7901}),
    json::row<&MouseData::ContainedButtons, kNumbers>(
        u"ContainedButtons", {.id = 7901, .line = "ContainedButtons Count:", .note = kNumbersNote}),
    json::row<&MouseData::ExpectedMotions>(u"ExpectedMotions", {.id = 7901, .line = "ExpectedMotions Count:"}),
    json::row<&MouseData::ActualMotions>(u"ActualMotions", {.id = 7901, .line = "ActualMotions Count:"}),
    json::row<&MouseData::ButtonClickCount>(u"ButtonClickCount", {.id = 7901, .line = "ButtonClickCount Count:"}),
    json::row<&MouseData::ScrollResults, kNumbers>(u"ScrollResults",
                                                   {.id = 7901, .line = "ScrollResults Count:", .note = kNumbersNote}),
};
constexpr json::RecordTable kMouseDataTable =
    json::Table({.name = "MouseData", .fields = kMouseDataFields, .completeId = 7919});

}  // namespace

void BoundingRectangle::Deserialize(const json::Value* value) {
  json::ReadRecord(kBoundingRectangleTable, this, value);
}

json::Serialized BoundingRectangle::Serialize(json::Document* inComingDoc) const {
  return json::WriteRecord(kBoundingRectangleTable, this, inComingDoc);
}

const json::RecordTable& BoundingRectangle::Table() { return kBoundingRectangleTable; }

const json::RecordTable& ButtonClickInfo::Table() { return kButtonClickInfoTable; }

const json::RecordTable& MouseMotionData::Table() { return kMouseMotionDataTable; }

const json::RecordTable& MouseData::Table() { return kMouseDataTable; }

}  // namespace ZQ_RMT_MODELS
