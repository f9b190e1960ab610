#include "tests/support/failing_allocations.h"

#include <cstdlib>
#include <new>

namespace {

std::uint64_t left = 0;
bool hasFailed = false;

bool Fails() {
  if (left == 0 || --left != 0) return false;
  hasFailed = true;
  return true;
}

// The functions that these stand in front of: the C library's or, with the address sanitizer, the sanitizer's.
extern "C" {
void* NextMalloc(std::size_t bytes) __asm__(ZQRMT_HEAP "malloc");
void* NextCalloc(std::size_t count, std::size_t bytes) __asm__(ZQRMT_HEAP "calloc");
void* NextRealloc(void* block, std::size_t bytes) __asm__(ZQRMT_HEAP "realloc");
}

}  // namespace

extern "C" {
__attribute__((visibility("default"))) void* malloc(std::size_t bytes) { return Fails() ? nullptr : NextMalloc(bytes); }
__attribute__((visibility("default"))) void* calloc(std::size_t count, std::size_t bytes) {
  return Fails() ? nullptr : NextCalloc(count, bytes);
}
__attribute__((visibility("default"))) void* realloc(void* block, std::size_t bytes) {
  return Fails() ? nullptr : NextRealloc(block, bytes);
}
}

// The sanitizer's own don't come by way of malloc.
void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept { return malloc(bytes == 0 ? 1 : bytes); }
void* operator new(std::size_t bytes) {
  void* const block = operator new(bytes, std::nothrow);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}
void* operator new[](std::size_t bytes, const std::nothrow_t&) noexcept { return operator new(bytes, std::nothrow); }
void* operator new[](std::size_t bytes) { return operator new(bytes); }
void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
void operator delete[](void* block) noexcept { std::free(block); }
void operator delete[](void* block, std::size_t) noexcept { std::free(block); }

void FailAllocation(std::uint64_t number) {
  left = number;
  hasFailed = false;
}

bool HasAllocationFailed() { return hasFailed; }
