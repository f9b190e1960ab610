#include "platform/audio_platform.h"

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <thread>

#include "platform/backends.h"
#include "platform/core_audio.h"
#include "platform/front/caller_memory.h"
#include "platform/front/front.h"

namespace {

thread_local std::unique_ptr<platform::Front> t_platform;
thread_local std::string t_error;

HRESULT OutOfMemory() {
  t_error = "Out of memory.";  // short enough to need no memory of its own
  return E_OUTOFMEMORY;
}

}  // namespace

namespace core_audio {

HRESULT CoCreateInstance(REFCLSID classId, IUnknown* outer, DWORD, REFIID interface, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (t_platform == nullptr) return CO_E_NOTINITIALIZED;
  return t_platform->CreateInstance(classId, outer, interface, object);
}

HRESULT PropVariantClear(PROPVARIANT* value) {
  return t_platform == nullptr ? platform::ReleaseProperty(value) : t_platform->ClearProperty(value);
}

void* CoTaskMemAlloc(std::size_t bytes) { return std::malloc(bytes); }
void CoTaskMemFree(void* memory) { std::free(memory); }

void Sleep(DWORD milliseconds) {
  if (t_platform != nullptr) return t_platform->Sleep(milliseconds);
  std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

}  // namespace core_audio

std::int32_t AudioPlatformInitialize(const char* description) {
  try {
    t_error.clear();
    if (description == nullptr) throw platform::PlatformError("No audio platform is named.");
    t_platform = std::make_unique<platform::Front>(platform::OpenBackend(description));
    return S_OK;
  } catch (const platform::PlatformError& error) {
    try {
      t_error = error.what();
    } catch (const std::bad_alloc&) {
      return OutOfMemory();
    }
    return error.Status();
  } catch (...) {
    // Whatever else is thrown in here comes from the allocator.
    return OutOfMemory();
  }
}

void AudioPlatformUninitialize() { t_platform.reset(); }

char* AudioPlatformState() {
  if (t_platform == nullptr) return nullptr;
  try {
    const std::string state = t_platform->StateText();
    auto* text = static_cast<char*>(std::malloc(state.size() + 1));
    if (text != nullptr) std::memcpy(text, state.c_str(), state.size() + 1);
    return text;
  } catch (...) {
    return nullptr;
  }
}

const char* AudioPlatformError() { return t_error.c_str(); }
