#include "json/member_kinds.h"

#include "logging/model_logger.h"

namespace json {

using logging::GetModelLogger;

void LogNullRecord(const Field& field) {
  if (field.options.id == kSilent) return;
  GetModelLogger().LogDebug2(
      field.options.id, [&] { return ReadLine(field); }, 0.0);
}

void LogListBegin(const ListLines* lines, std::size_t size) {
  if (lines == nullptr) return;
  GetModelLogger().LogDebug2(0, lines->before, 0.0);
  GetModelLogger().LogDebug2(
      22, [&] { return lines->count + std::to_string(size); }, 0.0);
}

void LogListItem(const ListLines* lines, std::size_t index) {
  if (lines == nullptr) return;
  GetModelLogger().LogDebug2(
      33, [&] { return "Current Index:" + std::to_string(index); }, 0.0);
}

void LogListEnd(const ListLines* lines) {
  if (lines == nullptr || lines->after == nullptr) return;
  GetModelLogger().LogDebug2(0, lines->after, 0.0);
}

const Value& EmptyObject() {
  static const Value kEmpty(rapidjson::kObjectType);
  return kEmpty;
}

}  // namespace json
