#pragma once

#include <cstdint>
#include <string>

#include "json/record.h"

namespace ZQ_RMT_MODELS {

// One event for the host's event log.
class EventModel : public json::Record<EventModel> {
 public:
  std::int32_t EventID = 0;
  std::u16string Payload;
  std::u16string Source;
  std::int32_t Severity = 0;

  static const json::RecordTable& Table();
};

// Holds an event, which belongs to the process and not to this record: an event that any contract brings replaces the
// one before, and every later contract with this record is written with it. Not guarded: used on one thread.
class EventLoggerData {
 public:
  void Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
