#pragma once

#include <array>
#include <cstdint>

#include "json/forward.h"

namespace ZQ_RMT_MODELS {

// One entry of a disk's SMART attribute table, as the 12-byte image that a disk gives.
struct SMART_ATTRIBUTE {
  std::uint8_t attributeID = 0;
  std::uint8_t attributeFlags =
      0;  // from bit 0: warranty, off_line, performance, error_rate, event_count, self_preservation
  std::uint8_t RESERVED2 = 0;
  std::uint8_t attributeValue = 0;  // normalised
  std::uint8_t worstNormalizedValue = 0;
  std::array<std::uint8_t, 4> rawAttributeValue{};
  std::array<std::uint8_t, 2> VendorSpecific{};
  std::uint8_t threshold = 0;
};
static_assert(sizeof(SMART_ATTRIBUTE) == 12 && alignof(SMART_ATTRIBUTE) == 1);

// Reads `value` into the record. A value that is no object changes nothing; a number or a flag that the object lacks
// repeats the one read before it, and is 0 where it is the first.
void DeserializeSmartAttribute(const json::Value& value, SMART_ATTRIBUTE& attribute);

// Makes `out` the object of the record, in the document's memory.
void SerializeSmartAttribute(const SMART_ATTRIBUTE& attribute, json::Value& out, json::Document& document);

}  // namespace ZQ_RMT_MODELS
