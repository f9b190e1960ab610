// Any text as the description of a virtual machine: it is refused with a sentence, or there is a machine that tells what it
// is, plays and hears. Whatever is heard is a number.

#include <nlohmann/json.hpp>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>
#include <vector>

#include "platform/front/journal.h"
#include "platform/front/state_text.h"
#include "platform/virtual/description.h"
#include "platform/virtual/machine.h"
#include "text/utf.h"

namespace {

using namespace virtual_audio;

void Require(bool condition) {
  if (!condition) std::abort();
}

// Some of the sound is computed for every frame, condition and pair of endpoints; more of them find nothing else.
bool IsSmall(const MachineDescription& description) {
  std::size_t parts = 0;
  for (const EndpointDescription& endpoint : description.endpoints) {
    parts += 1 + endpoint.path.size() + endpoint.hears.size();
  }
  return parts <= 32;
}

SampleFormat FloatFormatOf(const platform::EndpointState& endpoint) {
  return {.tag = WAVE_FORMAT_IEEE_FLOAT,
          .channels = endpoint.format.channels,
          .rate = endpoint.format.rate,
          .bits = 32,
          .validBits = 32,
          .isFloat = true};
}

void RequireNumbers(platform::PacketQueue& packets, std::size_t frameBytes) {
  BYTE* data = nullptr;
  UINT32 frames = 0;
  DWORD flags = 0;
  while (packets.GetBuffer(&data, &frames, &flags, nullptr, nullptr) == S_OK) {
    for (std::size_t at = 0; at < frames * frameBytes; at += sizeof(float)) {
      float sample = 0.0F;
      std::memcpy(&sample, data + at, sizeof sample);
      Require(std::isfinite(sample));
    }
    Require(packets.ReleaseBuffer(frames) == S_OK);
  }
}

// Plays a constant on every render endpoint, and listens on every capture endpoint.
void PlayAndHear(Machine& machine, const std::vector<platform::EndpointState>& endpoints) {
  constexpr DWORD kMilliseconds = 25;
  std::vector<std::shared_ptr<platform::Playback>> playbacks;
  std::vector<std::shared_ptr<platform::Recording>> recordings;
  std::vector<std::pair<std::shared_ptr<platform::PacketQueue>, std::size_t>> heard;
  for (const platform::EndpointState& endpoint : endpoints) {
    const SampleFormat format = FloatFormatOf(endpoint);
    if (endpoint.key.flow == eRender) {
      const std::vector<float> frames(std::size_t{format.channels} * (format.rate / 100), 0.5F);
      playbacks.emplace_back();
      Require(machine.OpenPlayback(endpoint.key, format, format.rate, &playbacks.back()) == S_OK);
      const auto* const bytes = reinterpret_cast<const BYTE*>(frames.data());
      Require(playbacks.back()->Write({bytes, frames.size() * sizeof(float)}) == S_OK);
      Require(playbacks.back()->Start() == S_OK);
    } else {
      heard.emplace_back(std::make_shared<platform::PacketQueue>(format, format.rate), format.FrameBytes());
      recordings.emplace_back();
      Require(machine.OpenRecording(endpoint.key, format, heard.back().first, &recordings.back()) == S_OK);
      Require(recordings.back()->Start() == S_OK);
    }
  }
  machine.Sleep(kMilliseconds);
  machine.lock();
  for (const auto& [packets, frameBytes] : heard) RequireNumbers(*packets, frameBytes);
  machine.unlock();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  MachineDescription description;
  try {
    description = ParseDescription({reinterpret_cast<const char*>(data), size});
  } catch (const platform::PlatformError& error) {
    const std::string_view sentence = error.what();
    Require(!sentence.empty() && text::ValidUtf8(sentence) == sentence && error.Status() == E_INVALIDARG);
    return 0;
  }
  const bool isSmall = IsSmall(description);
  description.hasVirtualClock = true;
  Machine machine(std::move(description));
  Require(nlohmann::json::accept(platform::StateText(machine, platform::Journal({}, true))));
  std::vector<platform::EndpointState> endpoints;
  machine.List(&endpoints);
  if (isSmall) PlayAndHear(machine, endpoints);
  return 0;
}
