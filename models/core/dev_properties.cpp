#include "models/core/dev_properties.h"

#include "json/access.h"
#include "json/member_kinds.h"
#include "logging/model_logger.h"

namespace ZQ_RMT_MODELS {
namespace {

using logging::GetModelLogger;
using TextList = json::KindOf<std::vector<std::u16string>>;

// Unlike in the lists of text elsewhere, an element of another kind isn't skipped but stored as the empty text.
json::ReadResult ReadValues(const json::Reading& reading, void* target) {
  if (reading.member == nullptr || !reading.member->IsArray()) return json::ReadResult::kNothing;
  auto& values = *static_cast<std::vector<std::u16string>*>(target);
  values.reserve(reading.member->Size());
  for (const json::Value& element : reading.member->GetArray()) json::ReadScalar(&element, values.emplace_back());
  return json::ReadResult::kStoredToLog;
}
constexpr json::Kind kValues = {.read = ReadValues, .write = TextList::Write, .name = TextList::kind.name};

constexpr json::Field kDevPropFields[] = {
    json::row<&DevProp::Name>(u"Name"),
    json::row<&DevProp::Type>(u"Type"),
    json::row<&DevProp::IsArray>(u"IsArray"),
    json::row<&DevProp::ValueArray, kValues>(u"ValueArray",
                                             {.note = "an element of another kind gives the empty text"}),
};
constexpr json::RecordTable kDevPropTable =
    json::Table({.name = "DevProp", .fields = kDevPropFields, .completeId = 781});

constexpr json::ListLines kLines = {"Serialize Properties Array", "Properties.size():", nullptr};
constexpr json::Field kDevPropertiesFields[] = {
    json::row<&DevProperties::Properties>(u"Properties", {.list = &kLines})};
constexpr json::RecordTable kDevPropertiesTable =
    json::Table({.name = "DevProperties", .fields = kDevPropertiesFields});

}  // namespace

PropValue DevProp::Deserialize(const json::Value* value) {
  *this = DevProp();
  json::ReadRecord(kDevPropTable, this, value);
  PropValue entry;
  if (json::IsAbsentRecord(value)) return entry;
  json::GetStringMember(*value, u"Name", &entry.Name);
  json::GetStringMember(*value, u"Type", &entry.Type);
  entry.IsArray = IsArray;
  const json::Value* const values = json::FindMember(*value, u"ValueArray");
  if (values != nullptr && values->IsArray()) entry.ValueArray = ValueArray;
  return entry;
}

json::Serialized DevProp::Serialize(json::Document* inComingDoc) const {
  return json::WriteRecord(kDevPropTable, this, inComingDoc);
}

const json::RecordTable& DevProp::Table() { return kDevPropTable; }

std::unique_ptr<PropertySet> DevProperties::Deserialize(const json::Value* value) {
  auto set = std::make_unique<PropertySet>();
  GetModelLogger().LogDebug3(1, "Entering DevProperties::Deserialize()", 0.0);
  const json::Value* const list = value == nullptr ? nullptr : json::FindMember(*value, u"Properties");
  if (list == nullptr || !list->IsArray()) return set;
  Properties.reserve(Properties.size() + list->Size());
  for (const json::Value& element : list->GetArray()) {
    DevProp& property = Properties.emplace_back();
    set->AddProperty(property.Deserialize(element.IsObject() ? &element : &json::EmptyObject()));
  }
  return set;
}

json::Serialized DevProperties::Serialize(json::Document* inComingDoc) const {
  json::Serialized result = json::WriteRecord(kDevPropertiesTable, this, inComingDoc);
  // This line names the list and not the record. Log readers rely on that.
  GetModelLogger().LogDebug2(782, "Serialize Complete:Properties Array", 0.0);
  return result;
}

const json::RecordTable& DevProperties::Table() { return kDevPropertiesTable; }

}  // namespace ZQ_RMT_MODELS
