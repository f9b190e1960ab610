#include "json/objects.h"

#include "json/record_table.h"
#include "logging/model_logger.h"

namespace json {

Serialized BeginObject(Document* inComingDoc, std::int32_t newDocumentId) {
  constexpr std::size_t kStackCapacity = 1024;

  Serialized result;
  result.value.SetObject();
  if (inComingDoc != nullptr) return result;
  if (newDocumentId != kSilent) {
    logging::GetModelLogger().LogDebug2(newDocumentId, "inComingDoc was NULL, Creating new object.", 0.0);
  }
  result.document = std::make_unique<Document>(nullptr, kStackCapacity);
  result.document->SetObject();
  return result;
}

}  // namespace json
