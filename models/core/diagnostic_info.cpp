#include "models/core/diagnostic_info.h"

#include "json/member_kinds.h"
#include "logging/model_logger.h"

namespace ZQ_RMT_MODELS {
namespace {

using logging::GetModelLogger;

// Appends an entry for each element, an empty one if the element isn't an array.
json::ReadResult ReadData(const json::Reading& reading, void* target) {
  if (reading.member == nullptr || !reading.member->IsArray()) return json::ReadResult::kNothing;
  auto& list = *static_cast<std::vector<DiagData>*>(target);
  list.reserve(list.size() + reading.member->Size());
  for (const json::Value& element : reading.member->GetArray()) list.emplace_back().Deserialize(&element);
  return json::ReadResult::kStored;
}
constexpr json::Kind kData = {
    .read = ReadData, .write = json::KindOf<std::vector<DiagData>>::Write, .name = "list of lists of pairs"};

constexpr json::Field kDiagnosticInfoFields[] = {
    json::row<&DiagnosticInfo::DiagnosticName>(u"DiagnosticName", {.id = 7001, .line = "Set DIAGNOSTIC_NAME:"}),
    json::row<&DiagnosticInfo::DiagnosticID>(u"DiagnosticID", {.id = 7002, .line = "Set DIAGNOSTIC_ID:"}),
    json::row<&DiagnosticInfo::DiagnosticActivationRequirement>(
        u"DiagnosticActivationRequirement", {.id = 7003, .line = "Set DIAGNOSTIC_ACTIVATION_REQUIREMENT:"}),
    json::row<&DiagnosticInfo::DiagnosticComponent>(u"DiagnosticComponent",
                                                    {.id = 7004, .line = "Set JSON_DIAGNOSTIC_COMPONENT:"}),
    json::row<&DiagnosticInfo::DiagnosticDataType>(u"DiagnosticDataType",
                                                   {.id = 7005, .line = "Set DIAGNOSTIC_DATA_TYPE:"}),
    json::row<&DiagnosticInfo::DiagnosticData, kData>(
        u"DiagnosticData",
        {.note = "each list an array of objects of one member each, the name and its text; comes back "
                 "sorted by name, the first of two like names; an element that is no array gives []"}),
};
constexpr json::RecordTable kDiagnosticInfoTable = json::Table(
    {.name = "DiagnosticInfo", .fields = kDiagnosticInfoFields, .logsSerializeEntry = false, .completeId = 7006});

}  // namespace

void DiagData::Deserialize(const json::Value* value) {
  GetModelLogger().LogDebug3(1, "Entering DiagData::Deserialize()", 0.0);
  if (value != nullptr) json::InsertPairs(*value, Pairs);
}

json::Serialized DiagData::Serialize(json::Document* inComingDoc) const {
  json::Serialized result = json::BeginObject(inComingDoc, json::kSilent, 0);
  result.value = json::PairsValue(Pairs, inComingDoc != nullptr ? *inComingDoc : *result.document);
  GetModelLogger().LogDebug2(7007, "Serialize Complete:DiagData", 0.0);
  return result;
}

const json::RecordTable& DiagnosticInfo::Table() { return kDiagnosticInfoTable; }

}  // namespace ZQ_RMT_MODELS
