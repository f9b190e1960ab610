// Steps shared by all code that reads or writes objects.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "json/types.h"

namespace json {

// Stores the value of each of `count` keys in `found`, which has room for them: null for a key that `object` doesn't
// have, and the first value of a key that it holds twice. `keyOf(row)` returns the key of a row; no two are alike, and
// an empty one is never found. A member that follows its predecessor's row is found at the first comparison, so
// reading an object in the order of its rows takes linear time.
template <class KeyOf>
void FindMembers(const Value& object, std::size_t count, const KeyOf& keyOf, const Value** found) {
  std::fill_n(found, count, nullptr);
  std::size_t expected = 0;
  for (const auto& member : object.GetObject()) {
    const std::u16string_view name(member.name.GetString(), member.name.GetStringLength());
    if (name.empty()) continue;
    for (std::size_t tried = 0; tried < count; ++tried) {
      const std::size_t row = expected + tried < count ? expected + tried : expected + tried - count;
      if (keyOf(row) != name) continue;
      if (found[row] == nullptr) found[row] = &member.value;
      expected = row + 1 < count ? row + 1 : 0;
      break;
    }
  }
}

// Whether no record can be read from the value: it is missing or no object.
inline bool IsAbsentRecord(const Value* member) { return member == nullptr || !member->IsObject(); }

// An empty object with room for `members` members, in the memory of `document`, whose root becomes null. An object that
// grows by itself gets room for 16, most of which a list of small records wouldn't need.
Value ObjectWithRoom(std::size_t members, Document& document);

// The same as the result of a writer: in the memory of `inComingDoc` or, if that is null, of a new document that the
// result owns. The latter is logged with the id `newDocumentId`.
Serialized BeginObject(Document* inComingDoc, std::int32_t newDocumentId, std::size_t members);

// Adds a member. The key's text isn't copied, so it must be a constant that lives as long as the module.
inline void AddMember(Value& object, std::u16string_view key, Value&& value, Document& document) {
  object.AddMember(Value(Value::StringRefType(key.data(), static_cast<rapidjson::SizeType>(key.size()))), value,
                   document.GetAllocator());
}

// A copy of `text`, up to its first zero unit, in the memory of `document`.
inline Value CopyText(std::u16string_view text, Document& document) {
  text = text.substr(0, text.find(u'\0'));
  return Value(text.data(), static_cast<rapidjson::SizeType>(text.size()), document.GetAllocator());
}

}  // namespace json
