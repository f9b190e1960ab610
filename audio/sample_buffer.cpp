#include "audio/sample_buffer.h"

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

}  // namespace audio
