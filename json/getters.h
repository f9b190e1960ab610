// Typed reads of a value, and of a member by its key.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "json/access.h"

namespace json {

// Each stores the text, number or flag that `member` holds in `target` and returns true. If `member` is null, which
// stands for a missing key, or holds a value of another kind, returns false and leaves `target` as it was.
//
// A text is read up to its first zero unit. A number written with a fraction or an exponent is no integer, and any
// other is no double. An integer must fit into 32 bits of the target's signedness, or into an int64 for that; 16 and 8
// bits then store its low bits.
bool ReadScalar(const Value* member, std::u16string& target);
bool ReadScalar(const Value* member, std::int64_t& target);
bool ReadScalar(const Value* member, std::int32_t& target);
bool ReadScalar(const Value* member, std::uint32_t& target);
bool ReadScalar(const Value* member, std::int16_t& target);
bool ReadScalar(const Value* member, std::uint16_t& target);
bool ReadScalar(const Value* member, std::uint8_t& target);
bool ReadScalar(const Value* member, double& target);
bool ReadScalar(const Value* member, float& target);
bool ReadScalar(const Value* member, bool& target);

// The same, but on failure `target` becomes 0.
template <class Number>
bool ReadScalarOrZero(const Value* member, Number& target) {
  target = 0;
  return ReadScalar(member, target);
}

// Stores the low 32 bits of a uint64. On failure returns false and `target` becomes 0.
bool ReadUint64AsUint32(const Value* member, std::uint32_t& target);

// Stores 0 for a flag and returns true: nothing reads the numbers of handles. For any other value returns false and
// leaves `target` as it was.
bool ReadHandle(const Value* member, std::uint64_t& target);

// Reads the member of `object` named `key`. Returns and stores what `read` does.
template <class Target, bool (*read)(const Value*, Target&)>
bool GetMember(const Value& object, std::u16string_view key, Target* out) {
  return read(FindMember(object, key), *out);
}

inline constexpr auto GetInt16Member = GetMember<std::int16_t, ReadScalarOrZero>;
inline constexpr auto GetUint16Member = GetMember<std::uint16_t, ReadScalarOrZero>;
inline constexpr auto GetInt32Member = GetMember<std::int32_t, ReadScalar>;
inline constexpr auto GetUint64AsUint32Member = GetMember<std::uint32_t, ReadUint64AsUint32>;
inline constexpr auto GetHandleMember = GetMember<std::uint64_t, ReadHandle>;
inline constexpr auto GetStringMember = GetMember<std::u16string, ReadScalar>;
inline constexpr auto GetInt64Member = GetMember<std::int64_t, ReadScalar>;
inline constexpr auto GetBoolMember = GetMember<bool, ReadScalar>;

}  // namespace json
