#pragma once

#include <map>
#include <string>

#include "json/forward.h"

namespace json {

// Texts by name, sorted by the names' code units. On the wire it is an array of objects of one member each.
using TextMap = std::map<std::u16string, std::u16string>;

// Inserts the first member of each element of `array`, its name and text up to the first zero unit. A name that the map
// already has keeps its text. Skips elements of another form; inserts nothing if `array` is no array.
void InsertPairs(const Value& array, TextMap& map);

// The map as an array, in its order, in the memory of `document`.
Value PairsValue(const TextMap& map, Document& document);

}  // namespace json
