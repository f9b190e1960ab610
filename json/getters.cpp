#include "json/getters.h"

#include "json/access.h"
#include "json/types.h"

namespace json {

bool StoreInt16(const Value* member, std::int16_t* out) {
  const bool stored = member != nullptr && member->IsInt();
  *out = stored ? static_cast<std::int16_t>(member->GetInt()) : std::int16_t{0};
  return stored;
}

bool StoreUint16(const Value* member, std::uint16_t* out) {
  const bool stored = member != nullptr && member->IsUint();
  *out = stored ? static_cast<std::uint16_t>(member->GetUint()) : std::uint16_t{0};
  return stored;
}

bool StoreInt32(const Value* member, std::int32_t* out) {
  if (member == nullptr || !member->IsInt()) return false;
  *out = member->GetInt();
  return true;
}

bool StoreUint64AsUint32(const Value* member, std::uint32_t* out) {
  const bool stored = member != nullptr && member->IsUint64();
  *out = stored ? static_cast<std::uint32_t>(member->GetUint64()) : 0;
  return stored;
}

bool StoreHandle(const Value* member, std::uint64_t* out) {
  if (member == nullptr || !member->IsBool()) return false;
  *out = 0;
  return true;
}

bool StoreString(const Value* member, std::u16string* out) {
  if (member == nullptr || !member->IsString()) return false;
  *out = member->GetString();
  return true;
}

bool StoreInt64(const Value* member, std::int64_t* out) {
  if (member == nullptr || !member->IsInt64()) return false;
  *out = member->GetInt64();
  return true;
}

bool StoreBool(const Value* member, bool* out) {
  if (member == nullptr || !member->IsBool()) return false;
  *out = member->IsTrue();
  return true;
}

bool GetInt16Member(const Value& object, std::u16string_view key, std::int16_t* out) {
  return StoreInt16(FindMember(object, key), out);
}
bool GetUint16Member(const Value& object, std::u16string_view key, std::uint16_t* out) {
  return StoreUint16(FindMember(object, key), out);
}
bool GetInt32Member(const Value& object, std::u16string_view key, std::int32_t* out) {
  return StoreInt32(FindMember(object, key), out);
}
bool GetUint64AsUint32Member(const Value& object, std::u16string_view key, std::uint32_t* out) {
  return StoreUint64AsUint32(FindMember(object, key), out);
}
bool GetHandleMember(const Value& object, std::u16string_view key, std::uint64_t* out) {
  return StoreHandle(FindMember(object, key), out);
}
bool GetStringMember(const Value& object, std::u16string_view key, std::u16string* out) {
  return StoreString(FindMember(object, key), out);
}
bool GetInt64Member(const Value& object, std::u16string_view key, std::int64_t* out) {
  return StoreInt64(FindMember(object, key), out);
}
bool GetBoolMember(const Value& object, std::u16string_view key, bool* out) {
  return StoreBool(FindMember(object, key), out);
}

}  // namespace json
