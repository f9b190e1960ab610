#pragma once

#include <cstdint>
#include <deque>
#include <vector>

#include "platform/core_audio.h"

namespace platform {

// Captured frames on their way to the caller, in packets. The statuses are those that IAudioCaptureClient publishes.
class PacketQueue {
 public:
  struct Packet {
    std::vector<BYTE> bytes;
    UINT32 frames;
    DWORD flags;
    std::int64_t position;  // the number of its first frame
    std::int64_t time;      // in ns, when that was taken
  };

  explicit PacketQueue(UINT32 bufferFrames) : bufferFrames_(bufferFrames) {}

  bool HasRoomFor(UINT32 frames) const { return frames <= bufferFrames_ - waitingFrames_; }
  void Push(Packet packet);

  // Frames of the next packet, 0 when there is none.
  UINT32 NextFrames() const { return packets_.empty() ? 0 : packets_.front().frames; }
  // As IAudioCaptureClient; the last two may be null. The bytes stay until ReleaseBuffer, whatever is pushed.
  HRESULT GetBuffer(BYTE** data, UINT32* frames, DWORD* flags, UINT64* position, UINT64* counter);
  HRESULT ReleaseBuffer(UINT32 frames);

 private:
  const UINT32 bufferFrames_;
  UINT32 waitingFrames_ = 0;
  bool isHandedOut_ = false;
  std::deque<Packet> packets_;
};

}  // namespace platform
