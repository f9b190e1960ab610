#pragma once

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "tests/platform/audio_helpers.h"

class VirtualMachine : public testing::Test {
 protected:
  // A machine on the virtual clock with a speaker and a microphone; the arguments are more keys of theirs and its own.
  static std::string With(const std::string& speaker, const std::string& mic = "", const std::string& own = "") {
    return R"({"clock": "virtual", "endpoints": [{"id": "speaker", "flow": "render", "default": ["console"])" +
           speaker + R"(}, {"id": "mic", "flow": "capture", "default": ["console"])" + mic + "}]" + own + "}";
  }
  bool Become(const std::string& json) { return AudioPlatformInitialize(WriteMachine(directory_, json).c_str()) == 0; }
  static std::string State() {
    const std::unique_ptr<char, decltype(&std::free)> text(AudioPlatformState(), &std::free);
    return text == nullptr ? "" : text.get();
  }
  void TearDown() override { AudioPlatformUninitialize(); }

 private:
  TempDirectory directory_;
};

template <class To, class From>
std::vector<To> As(const std::vector<From>& from) {
  std::vector<To> to(from.size() * sizeof(From) / sizeof(To));
  std::memcpy(to.data(), from.data(), from.size() * sizeof(From));
  return to;
}

// What the microphone records in `milliseconds` while the sound is played from its start on.
inline std::vector<BYTE> PlayAndRecord(const WAVEFORMATEXTENSIBLE& played, const std::vector<BYTE>& sound,
                                       const WAVEFORMATEXTENSIBLE& recorded, DWORD milliseconds) {
  RenderSide render(played);
  CaptureSide capture(recorded);
  render.Queue(sound);
  EXPECT_EQ(capture.client->Start() | render.client->Start(), S_OK);
  // The cuts fall where no packet ends.
  for (DWORD slept = 0; slept < milliseconds; slept += 7) Sleep(std::min<DWORD>(7, milliseconds - slept));
  EXPECT_EQ(capture.client->Stop(), S_OK);
  return capture.Drain();
}
