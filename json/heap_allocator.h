#pragma once

#include <cstddef>
#include <cstdlib>
#include <new>

namespace json {

// The memory of documents, pools, stacks and text buffers: the C library's heap. Throws std::bad_alloc where there is
// none. RapidJSON's own allocator gives null, which nothing in RapidJSON looks at before it writes there.
class HeapAllocator {
 public:
  // The names are RapidJSON's, and so is what a size of 0 gives: null.
  static constexpr bool kNeedFree = true;

  void* Malloc(std::size_t bytes) { return bytes == 0 ? nullptr : Present(std::malloc(bytes)); }

  // On failure `block` stays as it is.
  void* Realloc(void* block, std::size_t, std::size_t bytes) {
    if (bytes != 0) return Present(std::realloc(block, bytes));
    std::free(block);
    return nullptr;
  }

  static void Free(void* block) { std::free(block); }

 private:
  static void* Present(void* block) {
    if (block == nullptr) throw std::bad_alloc();
    return block;
  }
};

}  // namespace json
