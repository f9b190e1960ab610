// Records that are the byte image of a published structure in memory and one flat object on the wire. A table says
// where each field lies in the image; one loop reads all of them and one writes them.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "json/forward.h"
#include "json/record_table.h"

namespace ZQ_RMT_MODELS {

struct ImageOptions {
  std::int32_t id = json::kSilent;  // of the line that reading logs: the stored value
  const char* line = nullptr;       // the text of that line, if it isn't "Set K:"
  bool written = true;              // false if the key is read but never written
  bool writtenSigned = false;       // whether a number of 32 bits is written as a signed one
  bool repeatsKey = false;          // whether an earlier field has the same key; both are read from its one member
};

// A key and the bits of the image that it stands for. Bits are counted from the least significant bit of byte 0
// upwards, since the structure's fields are little-endian. A number has up to 32 bits in at most five bytes; an array
// has whole bytes.
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

// Bits `first` to `last` of a field that is divided into bits and begins at `byte`.
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

// The number of keys that are written.
consteval std::size_t WrittenCount(std::span<const ImageField> fields) {
  std::size_t count = 0;
  for (const ImageField& field : fields) count += field.options.written ? 1 : 0;
  return count;
}

// A run of bits that has no key.
struct ImageGap {
  std::uint32_t firstBit;
  std::uint32_t bitCount;
};

// Whether the fields and the gaps, both in ascending order, fill an image of `size` bytes without a bit left out or
// used twice.
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

// The first bit of the field named `key`. Doesn't compile if there is none.
consteval std::uint32_t FirstBit(std::span<const ImageField> fields, std::u16string_view key) {
  for (const ImageField& field : fields) {
    if (field.key == key) return field.firstBit;
  }
  throw "no such key";
}

// Read and write `image`, the bytes of the structure called `name`, as json::ReadRecord and json::WriteRecord do
// records. Of a number the low bits are stored, as many as its field has. An array whose length isn't its field's is
// ignored.
void ReadImage(const char* name, std::span<const ImageField> fields, std::span<std::uint8_t> image,
               const json::Value* value);
json::Serialized WriteImage(const char* name, std::span<const ImageField> fields, std::span<const std::uint8_t> image,
                            json::Document* inComingDoc);

}  // namespace ZQ_RMT_MODELS
