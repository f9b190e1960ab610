// Records that are byte images of a published structure, and one flat object on the wire: a table of where each field
// lies, one loop that reads and one that writes.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "json/forward.h"
#include "json/record_table.h"

namespace ZQ_RMT_MODELS {

struct ImageOptions {
  std::int32_t id = json::kSilent;  // of the line that reading logs: the value stored
  const char* line = nullptr;       // that line's text, where it isn't "Set K:"
  bool written = true;              // false: the key is read and never goes out
  bool writtenSigned = false;       // a number of 32 bits goes out as a signed one
  bool repeatsKey = false;          // an earlier field has the same key: both are read from the one member
};

// A key, and the bits of the image that it stands for. Bits are counted from the least significant of byte 0, as the
// structure's little-endian fields lie. A number has up to 32 bits within five bytes; an array takes whole bytes.
struct ImageField {
  std::u16string_view key;
  std::uint32_t firstBit;
  std::uint32_t bitCount;
  bool isArray;
  ImageOptions options;
};

// A field of 8, 16 or 32 bits at `byte`.
consteval ImageField number(std::u16string_view key, std::uint32_t byte, std::uint32_t width,
                            ImageOptions options = {}) {
  if (width != 8 && width != 16 && width != 32) throw "a number has 8, 16 or 32 bits";
  return {key, byte * 8, width, false, options};
}

// Bits `first` to `last` of the divided field whose first byte is `byte`.
consteval ImageField bits(std::u16string_view key, std::uint32_t byte, std::uint32_t first, std::uint32_t last,
                          ImageOptions options = {}) {
  if (first > last || last > 31) throw "bits of a field of at most 32";
  return {key, byte * 8 + first, last - first + 1, false, options};
}

// An array of `count` bytes at `byte`.
consteval ImageField bytes(std::u16string_view key, std::uint32_t byte, std::uint32_t count,
                           ImageOptions options = {}) {
  return {key, byte * 8, count * 8, true, options};
}

// The number of keys that go out.
consteval std::size_t WrittenCount(std::span<const ImageField> fields) {
  std::size_t count = 0;
  for (const ImageField& field : fields) count += field.options.written ? 1 : 0;
  return count;
}

// A run of bits without a key.
struct ImageGap {
  std::uint32_t firstBit;
  std::uint32_t bitCount;
};

// Whether the fields and the gaps, each in ascending order, make up an image of `size` bytes with no bit left out and
// none taken twice.
consteval bool Covers(std::span<const ImageField> fields, std::span<const ImageGap> gaps, std::uint32_t size) {
  std::uint32_t bit = 0;
  std::size_t gap = 0;
  for (const ImageField& field : fields) {
    while (gap < gaps.size() && gaps[gap].firstBit == bit) bit += gaps[gap++].bitCount;
    if (field.firstBit != bit) return false;
    bit += field.bitCount;
  }
  while (gap < gaps.size() && gaps[gap].firstBit == bit) bit += gaps[gap++].bitCount;
  return gap == gaps.size() && bit == size * 8;
}

// The first bit of the field under `key`; doesn't compile when there is none.
consteval std::uint32_t FirstBit(std::span<const ImageField> fields, std::u16string_view key) {
  for (const ImageField& field : fields) {
    if (field.key == key) return field.firstBit;
  }
  throw "no such key";
}

// Reads and writes `image`, the bytes of the structure called `name`. As json::ReadRecord and json::WriteRecord: a
// number keeps as many low bits as its field has; an array of another length than its field's changes nothing.
void ReadImage(const char* name, std::span<const ImageField> fields, std::span<std::uint8_t> image,
               const json::Value* value);
json::Serialized WriteImage(const char* name, std::span<const ImageField> fields, std::span<const std::uint8_t> image,
                            json::Document* inComingDoc);

}  // namespace ZQ_RMT_MODELS
