#include <malloc.h>
#include <windows.h>

#include <cstdlib>
#include <ctime>

#include "tests/support/process.h"

void SetEnvironment(const char* name, const std::string& value) { _putenv_s(name, value.c_str()); }

void SetTimeZone(const std::string& zone) {
  SetEnvironment("TZ", zone);
  _tzset();
}

std::size_t BytesInUse() {
  const auto heap = reinterpret_cast<HANDLE>(_get_heap_handle());
  std::size_t bytes = 0;
  PROCESS_HEAP_ENTRY entry{};
  HeapLock(heap);
  while (HeapWalk(heap, &entry) != 0) {
    if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) bytes += entry.cbData;
  }
  HeapUnlock(heap);
  return bytes;
}
