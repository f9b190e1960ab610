#include "platform/front/packet_queue.h"

#include <algorithm>
#include <utility>

namespace platform {
namespace {

// What a packet holds that is marked as silent. As samples it is quiet, so that it doesn't cover the sound for who reads it.
constexpr BYTE kLeftOver = 1;

}  // namespace

void PacketQueue::Append(const BYTE* bytes, std::size_t count, std::int64_t time) {
  for (std::size_t at = 0; at < count;) {
    const std::size_t packetBytes = std::size_t{PacketFrames()} * format_.FrameBytes();
    if (begun_.empty()) {
      begun_.reserve(packetBytes);
      begunTime_ = time;
    }
    const std::size_t taken = std::min(packetBytes - begun_.size(), count - at);
    if (bytes == nullptr) {
      begun_.resize(begun_.size() + taken, format_.SilentByte());
    } else {
      begun_.insert(begun_.end(), bytes + at, bytes + at + taken);
    }
    at += taken;
    if (begun_.size() == packetBytes) EndPacket();
  }
}

void PacketQueue::EndPacket() {
  const UINT32 frames = PacketFrames();
  const std::int64_t position = PacketStart(packet_++);
  std::vector<BYTE> bytes = std::exchange(begun_, {});
  DWORD flags = hasLost_ ? DWORD{AUDCLNT_BUFFERFLAGS_DATA_DISCONTINUITY} : DWORD{0};
  hasLost_ = !IsRoomFor(frames);
  if (hasLost_) return;
  const auto isSilent = [this](BYTE byte) { return byte == format_.SilentByte(); };
  if (marksSilence_ && std::ranges::all_of(bytes, isSilent)) {
    flags |= AUDCLNT_BUFFERFLAGS_SILENT;
    std::ranges::fill(bytes, kLeftOver);
  }
  packets_.push_back({std::move(bytes), frames, flags, position, begunTime_});
  waitingFrames_ += frames;
}

std::int64_t PacketQueue::NextFrame() const {
  return PacketStart(packet_) + static_cast<std::int64_t>(begun_.size() / format_.FrameBytes());
}

void PacketQueue::LoseBefore(std::int64_t frame) {
  packet_ = (frame * 100 + format_.rate - 1) / format_.rate;
  hasLost_ = true;
}

HRESULT PacketQueue::GetBuffer(BYTE** data, UINT32* frames, DWORD* flags, UINT64* position, UINT64* counter) {
  if (data == nullptr || frames == nullptr || flags == nullptr) return E_POINTER;
  if (isHandedOut_) return AUDCLNT_E_OUT_OF_ORDER;
  *frames = NextPacketFrames();
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
  if (frames != 0 && frames != NextPacketFrames()) return AUDCLNT_E_INVALID_SIZE;
  isHandedOut_ = false;
  if (frames == 0) return S_OK;
  waitingFrames_ -= frames;
  packets_.pop_front();
  return S_OK;
}

}  // namespace platform
