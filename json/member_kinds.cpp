#include "json/member_kinds.h"

#include "logging/model_logger.h"

namespace json {

using logging::GetModelLogger;

bool ReadText(const Value* member, std::u16string& target) {
  return StoreString(member, &target);
}

bool ReadNumber(const Value* member, std::int32_t& target) {
  return StoreInt32(member, &target);
}

bool ReadNumber(const Value* member, std::uint32_t& target) {
  if (member == nullptr || !member->IsUint()) return false;
  target = member->GetUint();
  return true;
}

bool ReadNumber(const Value* member, std::int16_t& target) {
  if (member == nullptr || !member->IsInt()) return false;
  target = static_cast<std::int16_t>(member->GetInt());
  return true;
}

bool ReadNumber(const Value* member, std::uint16_t& target) {
  if (member == nullptr || !member->IsUint()) return false;
  target = static_cast<std::uint16_t>(member->GetUint());
  return true;
}

bool ReadNumber(const Value* member, std::uint8_t& target) {
  if (member == nullptr || !member->IsUint()) return false;
  target = static_cast<std::uint8_t>(member->GetUint());
  return true;
}

bool ReadNumber(const Value* member, std::int64_t& target) {
  return StoreInt64(member, &target);
}

bool ReadNumber(const Value* member, double& target) {
  if (member == nullptr || !member->IsDouble()) return false;
  target = member->GetDouble();
  return true;
}

bool ReadNumber(const Value* member, float& target) {
  if (member == nullptr || !member->IsFloat()) return false;
  target = member->GetFloat();
  return true;
}

bool ReadNumber(const Value* member, bool& target) {
  return StoreBool(member, &target);
}

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
