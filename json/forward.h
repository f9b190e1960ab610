// Names of the JSON types, for headers that only pass them on.
#pragma once

#include <rapidjson/fwd.h>

#include "json/heap_allocator.h"

namespace json {

// Text is UTF-16 in 16-bit units, in memory and in the documents.
using Encoding = rapidjson::UTF16<char16_t>;
using Allocator = rapidjson::MemoryPoolAllocator<HeapAllocator>;
using Value = rapidjson::GenericValue<Encoding, Allocator>;
using Document = rapidjson::GenericDocument<Encoding, Allocator, HeapAllocator>;

struct Serialized;
struct RecordTable;

}  // namespace json
