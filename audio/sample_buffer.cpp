#include "audio/sample_buffer.h"

#include <cstring>
#include <new>
#include <utility>

namespace audio {

bool SampleBufferClass::Allocate(std::uint32_t size) {
  std::unique_ptr<std::uint8_t[]> store(new (std::nothrow) std::uint8_t[size]);
  if (!store) return false;
  data_ = std::move(store);
  capacity_ = size;
  writeCursor_ = 0;
  return true;
}

bool SampleBufferClass::Write(const std::uint8_t* source, std::uint32_t count) {
  if (!data_ || source == nullptr) return false;
  // The sum of cursor and count could wrap around.
  if (count > capacity_ - writeCursor_) return false;
  std::memcpy(data_.get() + writeCursor_, source, count);
  writeCursor_ += count;
  return true;
}

}  // namespace audio
