#pragma once

#include <cstdint>
#include <string>

#include "audio/audio_stream.h"

namespace audio {

// Records into the endpoint's own buffer, which is read after the stop: SetBufferDuration, Initialize, Start, Stop,
// then ReadPacket, ReleasePacket and GetNextPacketSize until that is 0. The buffer has to hold all that is captured.
class AudioCaptureStreamClass : public AudioStreamClass {
 public:
  // Binds the capture endpoint that `name` selects, as AudioEndpointClass does.
  explicit AudioCaptureStreamClass(std::u16string name);

  // Sets the stream up in the device format of the system's default capture endpoint, or in what the bound endpoint
  // offers in its place. Throws kNotSetUp, with no platform call made, before SetBufferDuration.
  void Initialize();

  // The negotiated format; all zero before Initialize.
  const CaptureFormatBlock& GetFormat() const { return format_; }

  struct Packet {
    const std::uint8_t* data;  // the platform's, until ReleasePacket; not tested for null
    std::uint32_t frames;
  };
  // The next packet. Having none is a failure. A packet that is marked as silent is given like any other.
  Packet ReadPacket();
  // Gives back the packet just read, with its number of frames.
  void ReleasePacket(std::uint32_t frames);
  // The frames of the next packet, 0 if there is none.
  std::uint32_t GetNextPacketSize() const;

 private:
  void NegotiateFormat();

  CaptureFormatBlock format_;
};

}  // namespace audio
