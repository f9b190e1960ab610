#include "platform/front/render_buffer.h"

#include <algorithm>
#include <span>
#include <utility>

namespace platform {

RenderBuffer::RenderBuffer(const SampleFormat& format, UINT32 bufferFrames, std::shared_ptr<Playback> playback)
    : frameBytes_(format.FrameBytes()),
      silentByte_(format.SilentByte()),
      bufferFrames_(bufferFrames),
      playback_(std::move(playback)) {}

HRESULT RenderBuffer::GetBuffer(UINT32 frames, BYTE** data) {
  UINT32 padding = 0;
  const HRESULT status = playback_->Padding(&padding);
  if (status != S_OK) return status;
  if (data == nullptr) return E_POINTER;
  *data = nullptr;
  if (frames_ != 0) return AUDCLNT_E_OUT_OF_ORDER;
  if (frames > bufferFrames_ - std::min(padding, bufferFrames_)) return AUDCLNT_E_BUFFER_TOO_LARGE;
  if (frames == 0) return S_OK;
  area_.resize(std::size_t{frames} * frameBytes_);
  frames_ = frames;
  *data = area_.data();
  return S_OK;
}

HRESULT RenderBuffer::ReleaseBuffer(UINT32 frames, DWORD flags) {
  if ((flags & ~AUDCLNT_BUFFERFLAGS_SILENT) != 0) return E_INVALIDARG;
  if (frames_ == 0) return frames == 0 ? S_OK : AUDCLNT_E_OUT_OF_ORDER;
  if (frames > frames_) return AUDCLNT_E_INVALID_SIZE;
  frames_ = 0;
  if (frames == 0) return S_OK;
  const std::span<BYTE> filled = std::span(area_).first(std::size_t{frames} * frameBytes_);
  if ((flags & AUDCLNT_BUFFERFLAGS_SILENT) != 0) std::fill(filled.begin(), filled.end(), silentByte_);
  return playback_->Write(filled);
}

}  // namespace platform
