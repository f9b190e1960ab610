#pragma once

#include <cstdint>
#include <string>

#include "json/forward.h"

namespace ZQ_RMT_MODELS {

// One event for the host's event log.
class EventModel {
 public:
  std::int32_t EventID = 0;
  std::u16string Payload;
  std::u16string Source;
  std::int32_t Severity = 0;

  void Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
  static const json::RecordTable& Table();
};

// Carries an event. It lives in the process and not in this record: each event that any contract brings takes the place
// of the one before, and goes out with every later contract that has this record. Not guarded.
class EventLoggerData {
 public:
  void Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
