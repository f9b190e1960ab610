#include "json/text_map.h"

#include "json/objects.h"

namespace json {

void InsertPairs(const Value& array, TextMap& map) {
  if (!array.IsArray()) return;
  for (const Value& element : array.GetArray()) {
    if (!element.IsObject() || element.MemberCount() == 0) continue;
    const auto& first = *element.MemberBegin();
    if (first.value.IsString()) map.emplace(first.name.GetString(), first.value.GetString());
  }
}

Value PairsValue(const TextMap& map, Document& document) {
  Value array(rapidjson::kArrayType);
  array.Reserve(static_cast<rapidjson::SizeType>(map.size()), document.GetAllocator());
  for (const auto& [name, text] : map) {
    Value pair = ObjectWithRoom(1, document);
    pair.AddMember(CopyText(name, document), CopyText(text, document), document.GetAllocator());
    array.PushBack(pair, document.GetAllocator());
  }
  return array;
}

}  // namespace json
