#pragma once

#include "platform/core_audio.h"

namespace platform {

// Whether IAudioClient::Initialize may go on with these arguments: AUDCLNT_E_EXCLUSIVE_MODE_NOT_ALLOWED for the mode
// that no platform here has, E_INVALIDARG for what makes no sense.
HRESULT CheckRequest(AUDCLNT_SHAREMODE shareMode, DWORD flags, REFERENCE_TIME duration, REFERENCE_TIME periodicity);

// The frames of a buffer that holds `duration`, two packets at least. E_OUTOFMEMORY for more than an hour.
HRESULT BufferFrames(REFERENCE_TIME duration, DWORD rate, UINT32* frames);

// What IAudioClient::IsFormatSupported says of its arguments before a format is looked at.
HRESULT CheckFormatQuery(AUDCLNT_SHAREMODE shareMode, const WAVEFORMATEX* format, WAVEFORMATEX** closestMatch);

}  // namespace platform
