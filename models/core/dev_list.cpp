#include "models/core/dev_list.h"

#include <algorithm>

#include "json/member_kinds.h"
#include "logging/model_logger.h"

namespace ZQ_RMT_MODELS {
namespace {

using logging::GetModelLogger;

constexpr json::Field kDevListEntryFields[] = {
    json::row<&DevListEntry::Name>(u"Name"),
    json::row<&DevListEntry::DeviceID>(u"DeviceID"),
    json::row<&DevListEntry::DeviceInstanceID>(u"DeviceInstanceID"),
    json::row<&DevListEntry::DUID>(u"DUID"),
    json::row<&DevListEntry::Type>(u"Type"),
};
constexpr json::RecordTable kDevListEntryTable = json::Table({.name = "DevListEntry",
                                                              .fields = kDevListEntryFields,
                                                              .logsDeserializeEntry = false,
                                                              .logsSerializeEntry = false});

constexpr json::Field kDevListFields[] = {
    json::row<&DevList::TotalCount>(u"TotalCount", {.id = 7901}),
    json::row<&DevList::CurrentIndex>(u"CurrentIndex", {.id = 7901, .note = "-1 unless set"}),
    json::row<&DevList::Segment>(
        u"Segment", {.note = "comes back 20 entries at a time: those of the segment that CurrentIndex counts, from 0"}),
};
constexpr json::RecordTable kDevListTable =
    json::Table({.name = "DevList",
                 .fields = kDevListFields,
                 .note = "Comes back as an empty object when `CurrentIndex` is missing or negative."});

void AddNumber(json::Value& object, std::u16string_view key, std::int32_t number, json::Document& document) {
  json::AddMember(object, key, json::Value(number), document);
  GetModelLogger().LogDebug2(
      0, [&] { return "Serialize " + text::WideToNarrow(key) + ":" + text::IntToText(number); }, 0.0);
}

}  // namespace

const json::RecordTable& DevListEntry::Table() { return kDevListEntryTable; }

void DevList::Deserialize(const json::Value* value) { json::ReadRecord(kDevListTable, this, value); }

json::Serialized DevList::Serialize(json::Document* inComingDoc) const {
  GetModelLogger().LogDebug3(0, "Entering DevList::Serialize()", 0.0);
  json::Serialized result = json::BeginObject(inComingDoc, json::kSilent, std::size(kDevListFields));
  if (CurrentIndex < 0) return result;
  json::Document& document = inComingDoc != nullptr ? *inComingDoc : *result.document;
  AddNumber(result.value, u"TotalCount", TotalCount, document);
  AddNumber(result.value, u"CurrentIndex", CurrentIndex, document);

  GetModelLogger().LogDebug2(0, "Serialize Segment Array", 0.0);
  // A host may send any index, and the product wouldn't fit into 32 bits.
  const std::int64_t start = std::int64_t{CurrentIndex} * LIST_LENGTH;
  const auto summary = [&] {
    return "startingIndex:" + std::to_string(start) + ", devList->size():" + std::to_string(Segment.size()) +
           ", LIST_LENGTH:" + std::to_string(LIST_LENGTH);
  };
  GetModelLogger().LogDebug2(22, summary, 0.0);
  json::Value segment(rapidjson::kArrayType);
  const std::int64_t end = std::min(static_cast<std::int64_t>(Segment.size()), start + LIST_LENGTH);
  for (std::int64_t index = start; index < end; ++index) {
    GetModelLogger().LogDebug2(
        33, [&] { return "Current Index:" + std::to_string(index); }, 0.0);
    segment.PushBack(Segment[static_cast<std::size_t>(index)].Serialize(&document).value, document.GetAllocator());
  }
  json::AddMember(result.value, u"Segment", std::move(segment), document);
  GetModelLogger().LogDebug2(783, "Serialize Complete:devList", 0.0);
  return result;
}

const json::RecordTable& DevList::Table() { return kDevListTable; }

}  // namespace ZQ_RMT_MODELS
