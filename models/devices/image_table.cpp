#include "models/devices/image_table.h"

#include <algorithm>
#include <array>

#include "json/objects.h"
#include "logging/model_logger.h"
#include "models/devices/byte_array.h"
#include "text/narrow.h"

namespace ZQ_RMT_MODELS {
namespace {

using logging::GetModelLogger;

constexpr std::uint64_t Mask(const ImageField& field) { return (std::uint64_t{1} << field.bitCount) - 1; }

// All bytes that hold a bit of the number, as one little-endian value.
std::uint64_t Load(std::span<const std::uint8_t> image, const ImageField& field) {
  const std::uint32_t end = (field.firstBit + field.bitCount + 7) / 8;
  std::uint64_t value = 0;
  for (std::uint32_t byte = end; byte > field.firstBit / 8; --byte) value = value << 8 | image[byte - 1];
  return value;
}

std::uint32_t LoadNumber(std::span<const std::uint8_t> image, const ImageField& field) {
  return static_cast<std::uint32_t>(Load(image, field) >> field.firstBit % 8 & Mask(field));
}

void StoreNumber(std::span<std::uint8_t> image, const ImageField& field, std::uint32_t number) {
  const std::uint32_t shift = field.firstBit % 8;
  std::uint64_t value = (Load(image, field) & ~(Mask(field) << shift)) | (number & Mask(field)) << shift;
  const std::uint32_t end = (field.firstBit + field.bitCount + 7) / 8;
  for (std::uint32_t byte = field.firstBit / 8; byte < end; ++byte, value >>= 8) {
    image[byte] = static_cast<std::uint8_t>(value);
  }
}

std::string ReadLine(const ImageField& field, std::uint32_t number) {
  const std::string text =
      field.options.line != nullptr ? field.options.line : "Set " + text::WideToNarrow(field.key) + ":";
  return text + text::UintToText(number);
}

json::Value NumberValue(const ImageField& field, std::uint32_t number) {
  return field.options.writtenSigned ? json::Value(static_cast<std::int32_t>(number)) : json::Value(number);
}

}  // namespace

void ReadImage(const char* name, std::span<const ImageField> fields, std::span<std::uint8_t> image,
               const json::Value* value) {
  if (value != nullptr && !value->IsObject()) return;
  GetModelLogger().LogDebug3(
      1, [&] { return std::string("Entering ") + name + "::Deserialize()"; }, 0.0);
  if (value == nullptr) return;

  std::array<const json::Value*, json::kMaxRows> found;
  const auto keyOf = [&](std::size_t row) {
    return fields[row].options.repeatsKey ? std::u16string_view() : fields[row].key;
  };
  json::FindMembers(*value, fields.size(), keyOf, found.data());
  for (std::size_t row = 0; row < fields.size(); ++row) {
    const ImageField& field = fields[row];
    const auto original = [&] {
      return std::find_if(fields.begin(), fields.end(),
                          [&](const ImageField& other) { return other.key == field.key; });
    };
    const json::Value* const member =
        found[field.options.repeatsKey ? static_cast<std::size_t>(original() - fields.begin()) : row];
    if (field.isArray) {
      ReadBytes(member, image.subspan(field.firstBit / 8, field.bitCount / 8));
      continue;
    }
    if (member == nullptr || !member->IsUint()) continue;
    StoreNumber(image, field, member->GetUint());
    if (field.options.id == json::kSilent) continue;
    GetModelLogger().LogDebug2(
        field.options.id, [&] { return ReadLine(field, LoadNumber(image, field)); }, 0.0);
  }
}

json::Serialized WriteImage(const char* name, std::span<const ImageField> fields, std::span<const std::uint8_t> image,
                            json::Document* inComingDoc) {
  GetModelLogger().LogDebug3(
      0, [&] { return std::string("Entering ") + name + "::Serialize()"; }, 0.0);
  json::Serialized result = json::BeginObject(inComingDoc, json::kSilent, fields.size());
  json::Document& document = inComingDoc != nullptr ? *inComingDoc : *result.document;
  for (const ImageField& field : fields) {
    if (!field.options.written) continue;
    json::AddMember(result.value, field.key,
                    field.isArray ? BytesValue(image.subspan(field.firstBit / 8, field.bitCount / 8), document)
                                  : NumberValue(field, LoadNumber(image, field)),
                    document);
  }
  return result;
}

}  // namespace ZQ_RMT_MODELS
