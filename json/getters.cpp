#include "json/getters.h"

#include "json/types.h"

namespace json {
namespace {

template <class Held, class Target>
bool ReadAs(const Value* member, bool (Value::*isHeld)() const, Held (Value::*get)() const, Target& target) {
  if (member == nullptr || !(member->*isHeld)()) return false;
  target = static_cast<Target>((member->*get)());
  return true;
}

}  // namespace

bool ReadScalar(const Value* member, std::u16string& target) {
  if (member == nullptr || !member->IsString()) return false;
  target = member->GetString();
  return true;
}

bool ReadScalar(const Value* member, std::int64_t& target) {
  return ReadAs(member, &Value::IsInt64, &Value::GetInt64, target);
}
bool ReadScalar(const Value* member, std::int32_t& target) {
  return ReadAs(member, &Value::IsInt, &Value::GetInt, target);
}
bool ReadScalar(const Value* member, std::uint32_t& target) {
  return ReadAs(member, &Value::IsUint, &Value::GetUint, target);
}
bool ReadScalar(const Value* member, std::int16_t& target) {
  return ReadAs(member, &Value::IsInt, &Value::GetInt, target);
}
bool ReadScalar(const Value* member, std::uint16_t& target) {
  return ReadAs(member, &Value::IsUint, &Value::GetUint, target);
}
bool ReadScalar(const Value* member, std::uint8_t& target) {
  return ReadAs(member, &Value::IsUint, &Value::GetUint, target);
}
bool ReadScalar(const Value* member, double& target) {
  return ReadAs(member, &Value::IsDouble, &Value::GetDouble, target);
}
bool ReadScalar(const Value* member, float& target) {
  return ReadAs(member, &Value::IsFloat, &Value::GetFloat, target);
}
bool ReadScalar(const Value* member, bool& target) { return ReadAs(member, &Value::IsBool, &Value::GetBool, target); }

bool ReadUint64AsUint32(const Value* member, std::uint32_t& target) {
  target = 0;
  return ReadAs(member, &Value::IsUint64, &Value::GetUint64, target);
}

bool ReadHandle(const Value* member, std::uint64_t& target) {
  if (member == nullptr || !member->IsBool()) return false;
  target = 0;
  return true;
}

}  // namespace json
