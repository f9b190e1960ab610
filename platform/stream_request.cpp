#include "platform/stream_request.h"

#include <algorithm>

namespace platform {

namespace {

constexpr REFERENCE_TIME kUnitsPerSecond = 10'000'000;
// Two packets; a shorter duration is raised to it.
constexpr REFERENCE_TIME kShortestBuffer = kUnitsPerSecond / 50;
constexpr REFERENCE_TIME kLongestBuffer = 3600 * kUnitsPerSecond;

}  // namespace

HRESULT CheckRequest(AUDCLNT_SHAREMODE shareMode, DWORD flags, REFERENCE_TIME duration, REFERENCE_TIME periodicity) {
  constexpr DWORD kKnownFlags = AUDCLNT_STREAMFLAGS_AUTOCONVERTPCM | AUDCLNT_STREAMFLAGS_SRC_DEFAULT_QUALITY;
  if (shareMode == AUDCLNT_SHAREMODE_EXCLUSIVE) return AUDCLNT_E_EXCLUSIVE_MODE_NOT_ALLOWED;
  if (shareMode != AUDCLNT_SHAREMODE_SHARED || periodicity != 0) return E_INVALIDARG;
  return (flags & ~kKnownFlags) != 0 || duration < 0 ? E_INVALIDARG : S_OK;
}

HRESULT BufferFrames(REFERENCE_TIME duration, DWORD rate, UINT32* frames) {
  if (duration > kLongestBuffer) return E_OUTOFMEMORY;
  const REFERENCE_TIME units = std::max(duration, kShortestBuffer) * rate;
  *frames = static_cast<UINT32>((units + kUnitsPerSecond - 1) / kUnitsPerSecond);
  return S_OK;
}

HRESULT CheckFormatQuery(AUDCLNT_SHAREMODE shareMode, const WAVEFORMATEX* format, WAVEFORMATEX** closestMatch) {
  if (format == nullptr) return E_POINTER;
  if (shareMode == AUDCLNT_SHAREMODE_EXCLUSIVE) return AUDCLNT_E_UNSUPPORTED_FORMAT;
  if (shareMode != AUDCLNT_SHAREMODE_SHARED) return E_INVALIDARG;
  return closestMatch == nullptr ? E_POINTER : S_OK;
}

}  // namespace platform
