// Written out rather than taken from libsndfile, which Debian doesn't have for the Windows build.
#include "host/listening/wav_file.h"

#include <cstdint>

namespace host {
namespace {

// All numbers are little-endian, as on every system that this runs on and in the images of core_audio.h.
template <class Number>
std::string Bytes(const Number& number) {
  return {reinterpret_cast<const char*>(&number), sizeof number};
}

std::string Chunk(const std::string& id, const std::string& content) {
  std::string chunk = id + Bytes(static_cast<std::uint32_t>(content.size())) + content;
  if (content.size() % 2 != 0) chunk += '\0';
  return chunk;
}

WORD TagFor(const platform::SampleFormat& format) {
  if (format.channels > 2 || format.validBits != format.bits) return WAVE_FORMAT_EXTENSIBLE;
  return format.isFloat ? WAVE_FORMAT_IEEE_FLOAT : WAVE_FORMAT_PCM;
}

std::string FormatChunk(platform::SampleFormat format) {
  format.tag = TagFor(format);
  const WAVEFORMATEXTENSIBLE image = format.ToWaveFormat();
  // The first version of the format ends before cbSize, and readers of integer samples expect that one.
  constexpr std::size_t kFirstVersionBytes = 16, kBasicBytes = 18;
  const std::size_t bytes = format.tag == WAVE_FORMAT_PCM ? kFirstVersionBytes : kBasicBytes + image.Format.cbSize;
  return Chunk("fmt ", Bytes(image).substr(0, bytes));
}

}  // namespace

std::string WavFile(const CapturedSound& sound) {
  std::string content = "WAVE" + FormatChunk(sound.format);
  // Every format but the first one has a count of frames.
  if (TagFor(sound.format) != WAVE_FORMAT_PCM) {
    content += Chunk("fact", Bytes(static_cast<std::uint32_t>(sound.frames.size() / sound.format.FrameBytes())));
  }
  return Chunk("RIFF", content + Chunk("data", sound.frames));
}

}  // namespace host
