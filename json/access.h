// The thin layer over RapidJSON: parsing and writing a text, and the lookup of nested objects.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "json/forward.h"

namespace json {

// Parses `text`, up to its first zero unit, into the root of `document` by RFC 8259: nothing but white space behind the
// root, no comments, no NaN. Any depth of nesting is parsed without recursion. False, and the root as it was, when the
// text isn't JSON, when a number is beyond a double's range, or when an escape stands for half a surrogate pair.
bool ParseText(const std::u16string& text, Document& document);

// The value as compact JSON. Where it holds a double that is NaN or infinite the text ends there, with no closing
// brackets.
std::u16string ValueToText(const Value& value);

// The first member of `object` named `key`, by exact comparison of units; null when there is none or `object` is no
// object.
const Value* FindMember(const Value& object, std::u16string_view key);

// What GetObjectMember found.
struct ObjectMember {
  // The member, inside the parent's document; or the root of `error`.
  const Value* value = nullptr;
  // Set when the parent was an array.
  std::unique_ptr<Document> error;
};

// Looks up a member that holds something: returns 1 and puts the member into `out` when `parent` has it and it isn't
// null. Otherwise returns 0: with an error object of code 999 in `out` when `parent` is an array, else with `out` as it
// was.
std::int32_t GetObjectMember(const Value* parent, std::u16string_view key, ObjectMember* out);

// A new document whose root holds the text of `code` under PARSE_ERROR.
std::unique_ptr<Document> MakeErrorObject(std::int32_t code);

// The text of a RapidJSON parse error code, or of 999; "UNKNOWN" for any other.
std::u16string ParseErrorText(std::int32_t code);

}  // namespace json
