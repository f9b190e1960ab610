#include "models/core/task_arguments.h"

#include "json/member_kinds.h"
#include "logging/model_logger.h"

namespace ZQ_RMT_MODELS {
namespace {

using logging::GetModelLogger;

// Unlike other nested records this one is an array on the wire, and a value of any kind but null makes one.
json::ReadResult ReadList(const json::Reading& reading, void* target) {
  if (reading.member == nullptr) return json::ReadResult::kNothing;
  if (reading.member->IsNull()) {
    json::LogNullRecord(reading.field);
    return json::ReadResult::kNothing;
  }
  auto list = std::make_unique<ArgumentList>();
  list->Deserialize(reading.member);
  *static_cast<std::unique_ptr<ArgumentList>*>(target) = std::move(list);
  return json::ReadResult::kStored;
}
constexpr json::Kind kList = {.read = ReadList,
                              .write = json::KindOf<std::unique_ptr<ArgumentList>>::Write,
                              .name = "list of records",
                              .record = ArgumentData::Table,
                              .linePrefix = "No ",
                              .lineSuffix = " to set."};

constexpr json::Field kArgumentDataFields[] = {
    json::row<&ArgumentData::TaskArgumentName>(u"TaskArgumentName"),
    json::row<&ArgumentData::TaskArgumentValue>(u"TaskArgumentValue"),
};
constexpr json::RecordTable kArgumentDataTable =
    json::Table({.name = "ArgumentData", .fields = kArgumentDataFields, .logsSerializeEntry = false});

constexpr json::Field kTaskArgumentsFields[] = {
    json::row<&TaskArguments::ArgumentList, kList>(
        u"ArgumentList",
        {.id = 8301,
         .line = "No Task Arguments set.",
         .note =
             "an element that lacks a key has the text of the element before it; what is no array is an empty list"}),
};
constexpr json::RecordTable kTaskArgumentsTable =
    json::Table({.name = "TaskArguments",
                 .fields = kTaskArgumentsFields,
                 .readName = "ZQ_RMT_MODELS::TaskArguments",
                 .newDocumentId = 0,
                 .startLine = {0, "Starting serialization in ZQ_RMT_MODELS::TaskArguments::"},
                 .completeId = 787});

}  // namespace

const json::RecordTable& ArgumentData::Table() { return kArgumentDataTable; }

void ArgumentList::Deserialize(const json::Value* value) {
  // This line and the one in Serialize name the class around this one. Log readers rely on that.
  GetModelLogger().LogDebug3(1, "Entering TaskArguments::Deserialize()", 0.0);
  if (value == nullptr) return;
  Arguments.clear();
  if (!value->IsArray()) return;
  Arguments.reserve(value->Size());
  // One pair reads all elements and isn't reset in between, so an element that lacks a key gets the text of the element
  // before it.
  ArgumentData argument;
  for (const json::Value& element : value->GetArray()) {
    argument.Deserialize(element.IsObject() ? &element : nullptr);
    Arguments.push_back(argument);
  }
}

json::Serialized ArgumentList::Serialize(json::Document* inComingDoc) const {
  GetModelLogger().LogDebug3(0, "Entering TaskArguments::Serialize()", 0.0);
  json::Serialized result = json::BeginObject(inComingDoc, json::kSilent, 0);
  json::Document& document = inComingDoc != nullptr ? *inComingDoc : *result.document;
  result.value.SetArray();
  result.value.Reserve(static_cast<rapidjson::SizeType>(Arguments.size()), document.GetAllocator());
  for (const ArgumentData& argument : Arguments) {
    result.value.PushBack(argument.Serialize(&document).value, document.GetAllocator());
  }
  GetModelLogger().LogDebug2(786, "Serialize Complete:ArgumentList", 0.0);
  return result;
}

const json::RecordTable& TaskArguments::Table() { return kTaskArgumentsTable; }

}  // namespace ZQ_RMT_MODELS
