#pragma once

#include <memory>
#include <string>

#include "json/forward.h"
#include "models/core/core_data.h"

namespace ZQ_RMT_MODELS {

// The root of the text that a host and a test exchange, {"CoreData":{...}}. A new contract has a core record.
class RMTDataContract {
 public:
  std::unique_ptr<ZQ_RMT_MODELS::CoreData> CoreData = std::make_unique<ZQ_RMT_MODELS::CoreData>();

  // Reads a JSON text, up to its first zero unit. If it has a core record, that replaces the one of the contract, and
  // the result is true. If the text isn't JSON or has none, returns false and leaves the contract as it was.
  bool Deserialize(const std::u16string& text);
  // The same for a value that is parsed already.
  bool Deserialize(const json::Value& value);

  json::Serialized Serialize(json::Document* inComingDoc) const;
  static const json::RecordTable& Table();
  // The contract as compact JSON, its keys in the order of the wire.
  std::u16string Serialize() const;
};

}  // namespace ZQ_RMT_MODELS
