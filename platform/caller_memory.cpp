#include "platform/caller_memory.h"

#include <cstring>
#include <new>

namespace platform {

void* BytesForCaller(const void* bytes, std::size_t count) {
  void* memory = CoTaskMemAlloc(count);
  if (memory == nullptr) throw std::bad_alloc();
  return std::memcpy(memory, bytes, count);
}

LPWSTR TextForCaller(const WideText& text) {
  return static_cast<LPWSTR>(BytesForCaller(text.c_str(), (text.size() + 1) * sizeof(WCHAR)));
}

WAVEFORMATEX* WaveFormatForCaller(const SampleFormat& format) {
  const WAVEFORMATEXTENSIBLE wave = format.ToWaveFormat();
  return static_cast<WAVEFORMATEX*>(BytesForCaller(&wave, WaveFormatBytes(wave)));
}

std::size_t WaveFormatBytes(const WAVEFORMATEXTENSIBLE& wave) {
  return sizeof(WAVEFORMATEX) + wave.Format.cbSize;
}

}  // namespace platform
