#pragma once

#include <cstdint>
#include <cstring>
#include <memory>
#include <span>

namespace audio {

// A byte store of fixed size that is filled from front to back.
class SampleBufferClass {
 public:
  SampleBufferClass() = default;
  SampleBufferClass(const SampleBufferClass&) = delete;
  SampleBufferClass& operator=(const SampleBufferClass&) = delete;

  // Replaces the store by an empty one of `size` bytes. If there is no memory, returns false and changes nothing.
  bool Allocate(std::uint32_t size);

  // Appends `count` bytes. If they don't all fit, `source` is null or there is no store, returns false and stores
  // nothing.
  bool Write(const std::uint8_t* source, std::uint32_t count) {
    if (!data_ || source == nullptr) return false;
    // The sum of cursor and count could wrap around.
    if (count > capacity_ - writeCursor_) return false;
    std::memcpy(data_.get() + writeCursor_, source, count);
    writeCursor_ += count;
    return true;
  }

  // The bytes written so far, valid until the next Allocate.
  std::span<const std::uint8_t> Written() const { return {data_.get(), writeCursor_}; }

 private:
  std::unique_ptr<std::uint8_t[]> data_;
  std::uint32_t writeCursor_ = 0;
  std::uint32_t capacity_ = 0;
};

}  // namespace audio
