#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

#include "platform/core_audio.h"
#include "platform/sample_format.h"

namespace platform {

// Captured frames on their way from a backend to the caller, in packets of 10 ms. Frames are numbered from the stream's
// first. Where the rate isn't a multiple of 100 Hz, packets differ by a frame.
class PacketQueue {
 public:
  PacketQueue(const SampleFormat& format, UINT32 bufferFrames) : format_(format), bufferFrames_(bufferFrames) {}

  // For the backend: adds captured bytes, or as much silence for a null pointer, the first of which was taken at `time`,
  // in ns. A packet that there is no room for once it is whole is lost. Throws std::bad_alloc.
  void Append(const BYTE* bytes, std::size_t count, std::int64_t time);
  // For the backend: the next packet kept says that something before it is lost.
  void NoteLoss() { hasLost_ = true; }
  // For the backend: marks packets of nothing but silence from now on, and leaves something else in them, as drivers may.
  void MarkSilence() { marksSilence_ = true; }
  // For the backend: forgets what has come of the packet in progress.
  void DropBegunPacket() { begun_.clear(); }

  // For a backend that makes its sound when it is asked for: the number of the next frame to append, and how many are
  // left to the end of its packet.
  std::int64_t NextFrame() const;
  UINT32 FramesLeft() const { return static_cast<UINT32>(PacketStart(packet_ + 1) - NextFrame()); }
  // False when the next frame begins a packet that there is no room for now.
  bool HasRoom() const { return !begun_.empty() || IsRoomFor(PacketFrames()); }
  // Loses all packets that begin before the frame, when none is in progress.
  void LoseBefore(std::int64_t frame);

  // For the caller. Frames of the next packet, 0 when there is none.
  UINT32 NextPacketFrames() const { return packets_.empty() ? 0 : packets_.front().frames; }
  // As IAudioCaptureClient, with the statuses published there; the last two may be null. The bytes stay until
  // ReleaseBuffer, whatever is appended.
  HRESULT GetBuffer(BYTE** data, UINT32* frames, DWORD* flags, UINT64* position, UINT64* counter);
  HRESULT ReleaseBuffer(UINT32 frames);

 private:
  struct Packet {
    std::vector<BYTE> bytes;
    UINT32 frames;
    DWORD flags;
    std::int64_t position;  // the number of its first frame
    std::int64_t time;      // in ns, when that was taken
  };

  std::int64_t PacketStart(std::int64_t packet) const { return packet * format_.rate / 100; }
  UINT32 PacketFrames() const { return static_cast<UINT32>(PacketStart(packet_ + 1) - PacketStart(packet_)); }
  bool IsRoomFor(UINT32 frames) const { return frames <= bufferFrames_ - waitingFrames_; }
  void EndPacket();

  const SampleFormat format_;
  const UINT32 bufferFrames_;
  std::vector<BYTE> begun_;  // the packet in progress
  std::int64_t begunTime_ = 0;
  std::int64_t packet_ = 0;  // its number
  bool marksSilence_ = false;
  bool hasLost_ = false;  // something, since the last packet that was kept
  std::deque<Packet> packets_;
  UINT32 waitingFrames_ = 0;
  bool isHandedOut_ = false;
};

}  // namespace platform
