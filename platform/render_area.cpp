#include "platform/render_area.h"

#include <algorithm>

namespace platform {

HRESULT RenderArea::GetBuffer(UINT32 frames, UINT32 room, BYTE** data) {
  if (data == nullptr) return E_POINTER;
  if (frames_ != 0) return AUDCLNT_E_OUT_OF_ORDER;
  if (frames > room) return AUDCLNT_E_BUFFER_TOO_LARGE;
  if (frames == 0) return S_OK;
  bytes_.resize(std::size_t{frames} * frameBytes_);
  frames_ = frames;
  *data = bytes_.data();
  return S_OK;
}

HRESULT RenderArea::ReleaseBuffer(UINT32 frames, DWORD flags, std::span<const BYTE>* filled) {
  if ((flags & ~AUDCLNT_BUFFERFLAGS_SILENT) != 0) return E_INVALIDARG;
  *filled = {};
  if (frames_ == 0) return frames == 0 ? S_OK : AUDCLNT_E_OUT_OF_ORDER;
  if (frames > frames_) return AUDCLNT_E_INVALID_SIZE;
  const std::span<BYTE> taken = std::span(bytes_).first(std::size_t{frames} * frameBytes_);
  if ((flags & AUDCLNT_BUFFERFLAGS_SILENT) != 0) std::fill(taken.begin(), taken.end(), silentByte_);
  frames_ = 0;
  *filled = taken;
  return S_OK;
}

}  // namespace platform
