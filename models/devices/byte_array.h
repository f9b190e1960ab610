#pragma once

#include <cstdint>
#include <span>

#include "json/types.h"

namespace ZQ_RMT_MODELS {

// The low 8 bits of an integer of any size; 0 for a value of another kind.
std::uint8_t ByteOf(const json::Value& value);

// Fills `target` from an array of exactly as many elements and returns true. For any other value, and for a null
// `member`, returns false and changes nothing.
bool ReadBytes(const json::Value* member, std::span<std::uint8_t> target);

// An array with a number for each byte, in the memory of `document`.
json::Value BytesValue(std::span<const std::uint8_t> bytes, json::Document& document);

}  // namespace ZQ_RMT_MODELS
