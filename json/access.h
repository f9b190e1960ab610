// The thin layer over RapidJSON: parsing and writing a text, and the lookup of members.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "json/forward.h"

namespace json {

// Parses `text`, up to its first zero unit, into the root of `document` and returns true. If the text isn't JSON by
// RFC 8259, a number is beyond a double's range, or an escape stands for half a surrogate pair, returns false and
// leaves the root as it was. Any depth of nesting is parsed without recursion.
bool ParseText(const std::u16string& text, Document& document);

// The value as compact JSON. At a double that is NaN or infinite the text ends, without closing brackets.
std::u16string ValueToText(const Value& value);

// The first member of `object` that is named exactly `key`. Null if there is none or `object` is no object.
const Value* FindMember(const Value& object, std::u16string_view key);

// What GetObjectMember found.
struct ObjectMember {
  // The member, inside the parent's document; or the root of `error`.
  const Value* value = nullptr;
  // Set if the parent was an array.
  std::unique_ptr<Document> error;
};

// Looks up a member. If `parent` has it and it isn't null, puts it into `out` and returns 1. Otherwise returns 0. If
// `parent` is an array, `out` then gets an error object of code 999; else it stays as it was.
std::int32_t GetObjectMember(const Value* parent, std::u16string_view key, ObjectMember* out);

// A new document whose root is an object with the text of `code` under the key PARSE_ERROR.
std::unique_ptr<Document> MakeErrorObject(std::int32_t code);

// The text of a RapidJSON parse error code, or of 999; "UNKNOWN" for any other.
std::u16string ParseErrorText(std::int32_t code);

}  // namespace json
