#include "models/core/event_logger_data.h"

#include "json/member_kinds.h"

namespace ZQ_RMT_MODELS {
namespace {

constexpr json::Field kEventFields[] = {
    json::row<&EventModel::EventID>(u"EventID"),
    json::row<&EventModel::Payload>(u"Payload"),
    json::row<&EventModel::Source>(u"Source"),
    json::row<&EventModel::Severity>(u"Severity"),
};
constexpr json::RecordTable kEventTable = json::Table({.name = "EventModel",
                                                       .fields = kEventFields,
                                                       .logsDeserializeEntry = false,
                                                       .logsSerializeEntry = false,
                                                       .completeId = 777});

// The event of the process, which all EventLoggerData records read and write.
struct ProcessEvent {
  std::unique_ptr<EventModel> evModel = std::make_unique<EventModel>();
} processEvent;

constexpr json::Field kFields[] = {json::row<&ProcessEvent::evModel>(u"evModel")};
constexpr json::RecordTable kTable =
    json::Table({.name = "EventLoggerData",
                 .fields = kFields,
                 .logsDeserializeEntry = false,
                 .logsSerializeEntry = false,
                 .completeId = 778,
                 .note = "Comes back with the last event that any contract brought to this process."});

}  // namespace

const json::RecordTable& EventModel::Table() { return kEventTable; }

void EventLoggerData::Deserialize(const json::Value* value) { json::ReadRecord(kTable, &processEvent, value); }

json::Serialized EventLoggerData::Serialize(json::Document* inComingDoc) const {
  return json::WriteRecord(kTable, &processEvent, inComingDoc);
}

const json::RecordTable& EventLoggerData::Table() { return kTable; }

}  // namespace ZQ_RMT_MODELS
