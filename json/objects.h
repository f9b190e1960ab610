// Steps that everything that reads or writes an object shares.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "json/types.h"

namespace json {

// Puts the value of each of `count` keys into `found`, null for a key that `object` doesn't have; a key that the object
// holds twice gives its first value. `keyOf(row)` is the key of a row, no two alike. Members that come in the order of
// the rows are found at the first comparison.
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

// Whether nothing stands under the key: null, or a value of a kind that no record is read from.
inline bool IsAbsentRecord(const Value* member) {
  return member == nullptr || !member->IsObject();
}

// An empty object with room for `members` members. By itself RapidJSON makes room for 16, most of it for nothing in a list
// of small records. The document's root is null afterwards.
Value ObjectWithRoom(std::size_t members, Document& document);

// The same as the result of a writer: in the result's own document when `inComingDoc` is null, which is logged under
// `newDocumentId`.
Serialized BeginObject(Document* inComingDoc, std::int32_t newDocumentId, std::size_t members);

// Adds a member. The key's text is not copied: it must be one of the constants that live as long as the module.
inline void AddMember(Value& object, std::u16string_view key, Value&& value, Document& document) {
  object.AddMember(Value(Value::StringRefType(key.data(), static_cast<rapidjson::SizeType>(key.size()))), value,
                   document.GetAllocator());
}

// `text`, up to its first zero unit, copied into the document.
inline Value CopyText(std::u16string_view text, Document& document) {
  text = text.substr(0, text.find(u'\0'));
  return Value(text.data(), static_cast<rapidjson::SizeType>(text.size()), document.GetAllocator());
}

}  // namespace json
