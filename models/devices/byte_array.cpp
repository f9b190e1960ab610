#include "models/devices/byte_array.h"

namespace ZQ_RMT_MODELS {

std::uint8_t ByteOf(const json::Value& value) {
  if (value.IsUint64()) return static_cast<std::uint8_t>(value.GetUint64());
  if (value.IsInt64()) return static_cast<std::uint8_t>(value.GetInt64());
  return 0;
}

bool ReadBytes(const json::Value* member, std::span<std::uint8_t> target) {
  if (member == nullptr || !member->IsArray() || member->Size() != target.size()) return false;
  std::size_t i = 0;
  for (const json::Value& element : member->GetArray()) target[i++] = ByteOf(element);
  return true;
}

json::Value BytesValue(std::span<const std::uint8_t> bytes, json::Document& document) {
  json::Value array(rapidjson::kArrayType);
  array.Reserve(static_cast<rapidjson::SizeType>(bytes.size()), document.GetAllocator());
  for (const std::uint8_t byte : bytes) array.PushBack(byte, document.GetAllocator());
  return array;
}

}  // namespace ZQ_RMT_MODELS
