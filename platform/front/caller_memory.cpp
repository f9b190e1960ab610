#include "platform/front/caller_memory.h"

#include <cstring>
#include <new>

namespace platform {

namespace {

void* CopyForCaller(const void* bytes, std::size_t count) {
  void* memory = CoTaskMemAlloc(count);
  if (memory == nullptr) throw std::bad_alloc();
  return std::memcpy(memory, bytes, count);
}

}  // namespace

LPWSTR TextForCaller(const std::u16string& text) {
  return static_cast<LPWSTR>(CopyForCaller(text.c_str(), (text.size() + 1) * sizeof(WCHAR)));
}

WAVEFORMATEX* FormatForCaller(const SampleFormat& format) {
  return reinterpret_cast<WAVEFORMATEX*>(FormatBlobForCaller(format).pBlobData);
}

BLOB FormatBlobForCaller(const SampleFormat& format) {
  const WAVEFORMATEXTENSIBLE wave = format.ToWaveFormat();
  const std::size_t bytes = sizeof(WAVEFORMATEX) + wave.Format.cbSize;
  return {static_cast<ULONG>(bytes), static_cast<BYTE*>(CopyForCaller(&wave, bytes))};
}

void* MemoryOf(const PROPVARIANT* value) {
  if (value == nullptr) return nullptr;
  if (value->vt == VT_LPWSTR) return value->pwszVal;
  return value->vt == VT_BLOB ? value->blob.pBlobData : nullptr;
}

HRESULT ReleaseProperty(PROPVARIANT* value) {
  if (value == nullptr) return S_OK;
  if (value->vt != VT_EMPTY && value->vt != VT_LPWSTR && value->vt != VT_BLOB) return E_INVALIDARG;
  CoTaskMemFree(MemoryOf(value));
  PropVariantInit(value);
  return S_OK;
}

}  // namespace platform
