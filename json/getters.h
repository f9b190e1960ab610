// Typed reads of one member, with three ways of failing: some leave the destination as it was, some set it to 0.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "json/forward.h"

namespace json {

// Each stores the number or text that `member` holds and returns true; a null `member` is a missing key. When the kind
// of the value is another, each returns false with the destination as its name in this list says. The tests are exact:
// a number written with a fraction or an exponent is no integer.
bool StoreInt16(const Value* member, std::int16_t* out);            // the low 16 bits of an int32; false: 0
bool StoreUint16(const Value* member, std::uint16_t* out);          // the low 16 bits of a uint32; false: 0
bool StoreInt32(const Value* member, std::int32_t* out);            // false: unchanged
bool StoreUint64AsUint32(const Value* member, std::uint32_t* out);  // the low 32 bits of a uint64; false: 0
// A JSON boolean stores 0: the key never carried a number that anything reads. False: unchanged.
bool StoreHandle(const Value* member, std::uint64_t* out);
bool StoreString(const Value* member, std::u16string* out);  // up to the first zero unit; false: unchanged
bool StoreInt64(const Value* member, std::int64_t* out);     // false: unchanged
bool StoreBool(const Value* member, bool* out);              // false: unchanged

// The same for the member of `object` named `key`.
bool GetInt16Member(const Value& object, std::u16string_view key, std::int16_t* out);
bool GetUint16Member(const Value& object, std::u16string_view key, std::uint16_t* out);
bool GetInt32Member(const Value& object, std::u16string_view key, std::int32_t* out);
bool GetUint64AsUint32Member(const Value& object, std::u16string_view key, std::uint32_t* out);
bool GetHandleMember(const Value& object, std::u16string_view key, std::uint64_t* out);
bool GetStringMember(const Value& object, std::u16string_view key, std::u16string* out);
bool GetInt64Member(const Value& object, std::u16string_view key, std::int64_t* out);
bool GetBoolMember(const Value& object, std::u16string_view key, bool* out);

}  // namespace json
