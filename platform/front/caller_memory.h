#pragma once

#include <string>

#include "platform/core_audio.h"
#include "platform/sample_format.h"

namespace platform {

// Copies that an operation hands out, for the caller to release with CoTaskMemFree. They throw std::bad_alloc. A format
// is handed out as its published image.
LPWSTR TextForCaller(const std::u16string& text);
WAVEFORMATEX* FormatForCaller(const SampleFormat& format);
BLOB FormatBlobForCaller(const SampleFormat& format);

// What a property value holds of the caller's memory; null for none.
void* MemoryOf(const PROPVARIANT* value);

// Releases what a property value holds and makes it empty. E_INVALIDARG, with nothing changed, for a kind of value that
// the property stores here don't hand out.
HRESULT ReleaseProperty(PROPVARIANT* value);

}  // namespace platform
