#include "models/core/dev_list.h"

#include <array>

#include "json/member_kinds.h"
#include "logging/model_logger.h"

namespace ZQ_RMT_MODELS {
namespace {

using logging::GetModelLogger;

struct EntryKey {
  std::u16string_view key;
  std::u16string DevListEntry::*member;
};
constexpr std::array<EntryKey, 5> kEntryKeys = {{{u"Name", &DevListEntry::Name},
                                                 {u"DeviceID", &DevListEntry::DeviceID},
                                                 {u"DeviceInstanceID", &DevListEntry::DeviceInstanceID},
                                                 {u"DUID", &DevListEntry::DUID},
                                                 {u"Type", &DevListEntry::Type}}};

bool ReadSegment(const json::Reading& reading, void* target) {
  if (reading.member == nullptr || !reading.member->IsArray()) return false;
  auto& entries = *static_cast<std::vector<DevListEntry>*>(target);
  entries.clear();
  entries.reserve(reading.member->Size());
  for (const json::Value& element : reading.member->GetArray()) {
    DevListEntry& entry = entries.emplace_back();
    if (!element.IsObject()) continue;
    std::array<const json::Value*, kEntryKeys.size()> found;
    json::FindMembers(
        element, found.size(), [](std::size_t row) { return kEntryKeys[row].key; }, found.data());
    for (std::size_t row = 0; row < found.size(); ++row) json::ReadText(found[row], entry.*kEntryKeys[row].member);
  }
  return false;
}

// The record writes its segment itself.
constexpr json::Kind kSegment = {ReadSegment, nullptr, nullptr};

constexpr json::Field kFields[] = {
    json::row<&DevList::TotalCount>(u"TotalCount", {.id = 7901}),
    json::row<&DevList::CurrentIndex>(u"CurrentIndex", {.id = 7901}),
    json::row<&DevList::Segment, kSegment>(u"Segment"),
};
constexpr json::RecordTable kTable = json::Table({.name = "DevList", .fields = kFields});

void AddNumber(json::Value& object, std::u16string_view key, std::int32_t number, json::Document& document) {
  json::AddMember(object, key, json::Value(number), document);
  GetModelLogger().LogDebug2(
      0, [&] { return "Serialize " + json::WideToNarrow(key) + ":" + json::IntToText(number); }, 0.0);
}

json::Value EntryValue(const DevListEntry& entry, json::Document& document) {
  json::Value object(rapidjson::kObjectType);
  for (const EntryKey& row : kEntryKeys) {
    json::AddMember(object, row.key, json::CopyText(entry.*row.member, document), document);
  }
  return object;
}

}  // namespace

void DevList::Deserialize(const json::Value* value) {
  json::ReadRecord(kTable, this, value);
}

json::Serialized DevList::Serialize(json::Document* inComingDoc) const {
  GetModelLogger().LogDebug3(0, "Entering DevList::Serialize()", 0.0);
  json::Serialized result = json::BeginObject(inComingDoc, json::kSilent);
  if (CurrentIndex < 0) return result;
  json::Document& document = inComingDoc != nullptr ? *inComingDoc : *result.document;
  AddNumber(result.value, u"TotalCount", TotalCount, document);
  AddNumber(result.value, u"CurrentIndex", CurrentIndex, document);

  GetModelLogger().LogDebug2(0, "Serialize Segment Array", 0.0);
  // In 64 bits: the product of two numbers that a host may choose doesn't fit in 32.
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
    segment.PushBack(EntryValue(Segment[static_cast<std::size_t>(index)], document), document.GetAllocator());
  }
  json::AddMember(result.value, u"Segment", std::move(segment), document);
  GetModelLogger().LogDebug2(783, "Serialize Complete:devList", 0.0);
  return result;
}

}  // namespace ZQ_RMT_MODELS
