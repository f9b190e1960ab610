#include "models/devices/smart_attribute.h"

#include <string_view>

#include "json/access.h"
#include "json/getters.h"
#include "json/objects.h"
#include "models/devices/byte_array.h"

namespace ZQ_RMT_MODELS {
namespace {

constexpr std::array<std::u16string_view, 6> kFlagKeys = {u"warranty",   u"off_line",    u"performance",
                                                          u"error_rate", u"event_count", u"self_preservation"};
constexpr std::uint8_t kBit6 = 1 << 6;
constexpr std::uint8_t kBit7 = 1 << 7;

void ReadFlags(const json::Value& flags, SMART_ATTRIBUTE& attribute) {
  bool flag = false;  // not reset: a flag that is missing repeats the one before it
  for (std::size_t bit = 0; bit < kFlagKeys.size(); ++bit) {
    json::GetBoolMember(flags, kFlagKeys[bit], &flag);
    const auto mask = static_cast<std::uint8_t>(1 << bit);
    attribute.attributeFlags = static_cast<std::uint8_t>((attribute.attributeFlags & ~mask) | (flag ? mask : 0));
  }
  // RESERVED1 is stored in bit 6, which is written as RESERVED2, and RESERVED2 in a byte that isn't written. Hosts
  // rely on that. Bit 7, which is written as RESERVED1, is always 0.
  json::GetBoolMember(flags, u"RESERVED1", &flag);
  attribute.attributeFlags =
      static_cast<std::uint8_t>((attribute.attributeFlags & ~(kBit6 | kBit7)) | (flag ? kBit6 : 0));
  json::GetBoolMember(flags, u"RESERVED2", &flag);
  attribute.RESERVED2 = flag ? 1 : 0;
}

json::Value FlagsValue(std::uint8_t flags, json::Document& document) {
  json::Value object = json::ObjectWithRoom(kFlagKeys.size() + 2, document);
  for (std::size_t bit = 0; bit < kFlagKeys.size(); ++bit) {
    json::AddMember(object, kFlagKeys[bit], json::Value((flags & 1 << bit) != 0), document);
  }
  json::AddMember(object, u"RESERVED1", json::Value((flags & kBit7) != 0), document);
  json::AddMember(object, u"RESERVED2", json::Value((flags & kBit6) != 0), document);
  return object;
}

}  // namespace

void DeserializeSmartAttribute(const json::Value& value, SMART_ATTRIBUTE& attribute) {
  if (!value.IsObject()) return;
  std::int32_t number = 0;  // not reset either
  const auto readByte = [&](std::u16string_view key) {
    json::GetInt32Member(value, key, &number);
    return static_cast<std::uint8_t>(number);
  };
  attribute.attributeID = readByte(u"attributeID");
  const json::Value* const flags = json::FindMember(value, u"attributeFlags");
  if (flags != nullptr && flags->IsObject()) ReadFlags(*flags, attribute);
  attribute.attributeValue = readByte(u"attributeValue");
  attribute.worstNormalizedValue = readByte(u"worstNormalizedValue");
  ReadBytes(json::FindMember(value, u"rawAttributeValue"), attribute.rawAttributeValue);
  ReadBytes(json::FindMember(value, u"VendorSpecific"), attribute.VendorSpecific);
  attribute.threshold = readByte(u"threshold");
}

void SerializeSmartAttribute(const SMART_ATTRIBUTE& attribute, json::Value& out, json::Document& document) {
  constexpr std::size_t kMembers = 7;
  out = json::ObjectWithRoom(kMembers, document);
  const auto addByte = [&](std::u16string_view key, std::uint8_t byte) {
    json::AddMember(out, key, json::Value(static_cast<unsigned>(byte)), document);
  };
  addByte(u"attributeID", attribute.attributeID);
  json::AddMember(out, u"attributeFlags", FlagsValue(attribute.attributeFlags, document), document);
  addByte(u"attributeValue", attribute.attributeValue);
  addByte(u"worstNormalizedValue", attribute.worstNormalizedValue);
  json::AddMember(out, u"rawAttributeValue", BytesValue(attribute.rawAttributeValue, document), document);
  json::AddMember(out, u"VendorSpecific", BytesValue(attribute.VendorSpecific, document), document);
  addByte(u"threshold", attribute.threshold);
}

}  // namespace ZQ_RMT_MODELS
