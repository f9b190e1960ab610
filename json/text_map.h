#pragma once

#include <map>
#include <string>

#include "json/forward.h"

namespace json {

// Names with their texts, sorted by code units and then by length. On the wire an array of objects of one member each.
using TextMap = std::map<std::u16string, std::u16string>;

// Inserts the first member of each element of `array`, name and text up to their first zero unit. A name that the map
// has keeps its text; an element of another shape, or an `array` that is none, is passed over.
void InsertPairs(const Value& array, TextMap& map);

// The map as an array, in its order.
Value PairsValue(const TextMap& map, Document& document);

}  // namespace json
