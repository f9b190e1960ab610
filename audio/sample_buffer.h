#pragma once

#include <cstdint>
#include <memory>
#include <span>

namespace audio {

// A byte store of fixed size that is filled from front to back and read from any place.
class SampleBufferClass {
 public:
  SampleBufferClass() = default;
  SampleBufferClass(const SampleBufferClass&) = delete;
  SampleBufferClass& operator=(const SampleBufferClass&) = delete;

  // Replaces the store by an empty one of `size` bytes. False, with nothing changed, if there is no memory.
  bool Allocate(std::uint32_t size);

  // Appends `count` bytes. False, with nothing stored, if they don't all fit, if `source` is null, or if there is no
  // store.
  bool Write(const std::uint8_t* source, std::uint32_t count);

  // The byte at the read position, which moves on by one. The caller stays within Used().
  std::uint8_t ReadByte() { return data_[readCursor_++]; }
  void SeekRead(std::uint32_t position) { readCursor_ = position; }

  // Bytes written so far.
  std::uint32_t Used() const { return writeCursor_; }
  // The bytes written so far; valid until the next Allocate.
  std::span<const std::uint8_t> Written() const { return {data_.get(), writeCursor_}; }

 private:
  std::unique_ptr<std::uint8_t[]> data_;
  std::uint32_t writeCursor_ = 0;
  std::uint32_t capacity_ = 0;
  std::uint32_t readCursor_ = 0;
};

}  // namespace audio
