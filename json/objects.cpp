#include "json/objects.h"

#include "json/record_table.h"
#include "logging/model_logger.h"

namespace json {

Value ObjectWithRoom(std::size_t members, Document& document) {
  // RapidJSON 1.1.0 has no function that reserves members: only an object built by events has the room it needs.
  auto fill = [members](Document& handler) {
    handler.StartObject();
    for (std::size_t i = 0; i < members; ++i) {
      handler.Key(u"", 0, false);
      handler.Null();
    }
    return handler.EndObject(static_cast<rapidjson::SizeType>(members));
  };
  document.Populate(fill);
  Value object = std::move(static_cast<Value&>(document));
  object.RemoveAllMembers();
  return object;
}

Serialized BeginObject(Document* inComingDoc, std::int32_t newDocumentId, std::size_t members) {
  constexpr std::size_t kStackCapacity = 1024;

  Serialized result;
  if (inComingDoc != nullptr) {
    result.value = ObjectWithRoom(members, *inComingDoc);
    return result;
  }
  if (newDocumentId != kSilent) {
    logging::GetModelLogger().LogDebug2(newDocumentId, "inComingDoc was NULL, Creating new object.", 0.0);
  }
  result.document = std::make_unique<Document>(nullptr, kStackCapacity);
  result.value = ObjectWithRoom(members, *result.document);
  return result;
}

}  // namespace json
