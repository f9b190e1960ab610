// Names of the JSON types, for headers that only pass them on.
#pragma once

#include <rapidjson/fwd.h>

namespace json {

// Text is UTF-16 in 16-bit units, in memory and in the documents.
using Encoding = rapidjson::UTF16<char16_t>;
using Allocator = rapidjson::MemoryPoolAllocator<rapidjson::CrtAllocator>;
using Value = rapidjson::GenericValue<Encoding, Allocator>;
using Document = rapidjson::GenericDocument<Encoding, Allocator, rapidjson::CrtAllocator>;

struct Serialized;
struct RecordTable;

}  // namespace json
