#include "models/core/event_logger_data.h"

#include "json/member_kinds.h"

namespace ZQ_RMT_MODELS {
namespace {

constexpr json::Field kEventModelFields[] = {
    json::row<&EventModel::EventID>(u"EventID"),
    json::row<&EventModel::Payload>(u"Payload"),
    json::row<&EventModel::Source>(u"Source"),
    json::row<&EventModel::Severity>(u"Severity"),
};
constexpr json::RecordTable kEventModelTable = json::Table({.name = "EventModel",
                                                            .fields = kEventModelFields,
                                                            .logsDeserializeEntry = false,
                                                            .logsSerializeEntry = false,
                                                            .completeId = 777});

// The event of the process, which all EventLoggerData records read and write.
struct ProcessEvent {
  std::unique_ptr<EventModel> evModel = std::make_unique<EventModel>();
} processEvent;

constexpr json::Field kProcessEventFields[] = {json::row<&ProcessEvent::evModel>(u"evModel")};
constexpr json::RecordTable kProcessEventTable =
    json::Table({.name = "EventLoggerData",
                 .fields = kProcessEventFields,
                 .logsDeserializeEntry = false,
                 .logsSerializeEntry = false,
                 .completeId = 778,
                 .note = "Comes back with the last event that any contract brought to this process."});

}  // namespace

const json::RecordTable& EventModel::Table() { return kEventModelTable; }

void EventLoggerData::Deserialize(const json::Value* value) {
  json::ReadRecord(kProcessEventTable, &processEvent, value);
}

json::Serialized EventLoggerData::Serialize(json::Document* inComingDoc) const {
  return json::WriteRecord(kProcessEventTable, &processEvent, inComingDoc);
}

const json::RecordTable& EventLoggerData::Table() { return kProcessEventTable; }

}  // namespace ZQ_RMT_MODELS
