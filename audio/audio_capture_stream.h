#pragma once

#include <cstdint>
#include <string>

#include "audio/audio_stream.h"
#include "audio/format_block.h"

namespace audio {

// Records into the endpoint's own buffer, which is read after the stop and has to hold everything that is captured.
// The order of calls: SetBufferDuration, Initialize, Start, Stop, then ReadPacket, ReleasePacket and GetNextPacketSize
// until that returns 0.
class AudioCaptureStreamClass : public AudioStreamClass {
 public:
  // Binds the capture endpoint that `name` selects, as AudioEndpointClass does.
  explicit AudioCaptureStreamClass(std::u16string name);

  // Sets the stream up in the device format of the system's default capture endpoint, or in the format that the bound
  // endpoint offers instead. Throws kPlatformError if it offers none, and kNotSetUp, without any platform call, before
  // SetBufferDuration.
  void Initialize();

  // The negotiated format; all zero before Initialize.
  const CaptureFormatBlock& GetFormat() const { return format_; }

  struct Packet {
    const std::uint8_t* data;  // owned by the platform, valid until ReleasePacket; may be null
    std::uint32_t frames;
  };
  // The next packet; one that is marked as silent isn't treated differently. Throws kPlatformError if there is none.
  Packet ReadPacket();
  // Gives the packet that was read last back to the platform. `frames` is its number of frames.
  void ReleasePacket(std::uint32_t frames);
  // The number of frames of the next packet, 0 if there is none.
  std::uint32_t GetNextPacketSize() const;

 private:
  void NegotiateFormat();

  CaptureFormatBlock format_;
};

}  // namespace audio
