#pragma once

#include <array>
#include <cstdint>

#include "json/forward.h"

namespace ZQ_RMT_MODELS {

// One entry of a disk's SMART attribute table, an image of 12 bytes as ATA disks give it.
struct SMART_ATTRIBUTE {
  std::uint8_t attributeID = 0;
  // From bit 0: warranty (a value at the threshold predicts a failure), off_line, performance, error_rate, event_count,
  // self_preservation, and two reserved bits.
  std::uint8_t attributeFlags = 0;
  std::uint8_t RESERVED2 = 0;                       // the byte behind the flags; it is never written
  std::uint8_t attributeValue = 0;                  // normalised: the lower, the worse
  std::uint8_t worstNormalizedValue = 0;            // the lowest so far
  std::array<std::uint8_t, 4> rawAttributeValue{};  // what it counts is the vendor's
  std::array<std::uint8_t, 2> VendorSpecific{};
  std::uint8_t threshold = 0;  // of attributeValue
};
static_assert(sizeof(SMART_ATTRIBUTE) == 12 && alignof(SMART_ATTRIBUTE) == 1);

// Reads `value` into the record. A value that is no object changes nothing. A number or a flag that the object lacks
// repeats the one that was read before it, and is 0 if there was none.
void DeserializeSmartAttribute(const json::Value& value, SMART_ATTRIBUTE& attribute);

// Makes `out` the object of the record, in the memory of `document`.
void SerializeSmartAttribute(const SMART_ATTRIBUTE& attribute, json::Value& out, json::Document& document);

}  // namespace ZQ_RMT_MODELS
