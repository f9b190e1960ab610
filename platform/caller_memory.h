#pragma once

#include <cstddef>

#include "platform/core_audio.h"
#include "platform/endpoint_state.h"
#include "platform/sample_format.h"

namespace platform {

// Copies that an operation hands out, for the caller to release with CoTaskMemFree. They throw std::bad_alloc.
void* BytesForCaller(const void* bytes, std::size_t count);
LPWSTR TextForCaller(const WideText& text);
WAVEFORMATEX* WaveFormatForCaller(const SampleFormat& format);

// The bytes of the format's published image.
std::size_t WaveFormatBytes(const WAVEFORMATEXTENSIBLE& wave);

}  // namespace platform
