#include "platform/packet_queue.h"

#include <utility>

namespace platform {

void PacketQueue::Push(Packet packet) {
  const UINT32 frames = packet.frames;
  packets_.push_back(std::move(packet));
  waitingFrames_ += frames;
}

HRESULT PacketQueue::GetBuffer(BYTE** data, UINT32* frames, DWORD* flags, UINT64* position, UINT64* counter) {
  if (data == nullptr || frames == nullptr || flags == nullptr) return E_POINTER;
  if (isHandedOut_) return AUDCLNT_E_OUT_OF_ORDER;
  *frames = NextFrames();
  if (packets_.empty()) return AUDCLNT_S_BUFFER_EMPTY;
  Packet& packet = packets_.front();
  isHandedOut_ = true;
  *data = packet.bytes.data();
  *flags = packet.flags;
  if (position != nullptr) *position = static_cast<UINT64>(packet.position);
  if (counter != nullptr) *counter = static_cast<UINT64>(packet.time / 100);
  return S_OK;
}

HRESULT PacketQueue::ReleaseBuffer(UINT32 frames) {
  if (!isHandedOut_) return frames == 0 ? S_OK : AUDCLNT_E_OUT_OF_ORDER;
  if (frames != 0 && frames != NextFrames()) return AUDCLNT_E_INVALID_SIZE;
  isHandedOut_ = false;
  if (frames == 0) return S_OK;
  waitingFrames_ -= frames;
  packets_.pop_front();
  return S_OK;
}

}  // namespace platform
