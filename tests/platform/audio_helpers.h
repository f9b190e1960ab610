#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <memory>

#include "platform/audio_platform.h"
#include "platform/com_ptr.h"
#include "platform/core_audio.h"
#include "tests/support/temp_directory.h"

inline std::string WriteMachine(const TempDirectory& directory, const std::string& json) {
  std::ofstream(directory / "machine.json") << json;
  return "virtual:" + directory / "machine.json";
}

// On Windows a wide character is another name for the same 16 bits.
inline LPCWSTR Wide(const char16_t* text) { return reinterpret_cast<LPCWSTR>(text); }

// Null on a thread that is on no platform.
inline ComPtr<IMMDeviceEnumerator> Enumerator() {
  ComPtr<IMMDeviceEnumerator> made;
  CoCreateInstance(core_audio::EnumeratorClass(), nullptr, CLSCTX_ALL, IID_IMMDeviceEnumerator, made.ReceiveAny());
  return made;
}

inline ComPtr<IMMDevice> DefaultDevice(EDataFlow flow) {
  ComPtr<IMMDevice> device;
  EXPECT_EQ(Enumerator()->GetDefaultAudioEndpoint(flow, eConsole, device.Receive()), S_OK);
  return device;
}

template <class Interface>
ComPtr<Interface> Activated(EDataFlow flow) {
  ComPtr<Interface> object;
  EXPECT_EQ(DefaultDevice(flow)->Activate(InterfaceId<Interface>(), CLSCTX_ALL, nullptr, object.ReceiveAny()), S_OK);
  return object;
}

inline std::string State() {
  const std::unique_ptr<char, decltype(&std::free)> text(AudioPlatformState(), &std::free);
  return text == nullptr ? "" : text.get();
}

inline WAVEFORMATEXTENSIBLE Format(WORD tag, WORD channels, DWORD rate, WORD bits, WORD validBits = 0) {
  const auto align = static_cast<WORD>(channels * bits / 8);
  const auto tail = static_cast<WORD>(tag == WAVE_FORMAT_EXTENSIBLE ? 22 : 0);
  return {{tag, channels, rate, rate * align, align, bits, tail}, {validBits}, 0, KSDATAFORMAT_SUBTYPE_PCM};
}

inline const WAVEFORMATEXTENSIBLE kMono = Format(WAVE_FORMAT_PCM, 1, 48000, 16);

// A stream of 1.5 s on the default endpoint, with its service and what that handed out last.
template <class Service, EDataFlow kFlow, DWORD kFlags>
struct OpenStream {
  explicit OpenStream(const WAVEFORMATEXTENSIBLE& format) : frameBytes(format.Format.nBlockAlign) {
    EXPECT_EQ(client->Initialize(AUDCLNT_SHAREMODE_SHARED, kFlags, 15000000, 0, &format.Format, nullptr), S_OK);
    EXPECT_EQ(client->GetService(InterfaceId<Service>(), service.ReceiveAny()), S_OK);
  }
  ComPtr<IAudioClient> client = Activated<IAudioClient>(kFlow);
  ComPtr<Service> service;
  std::size_t frameBytes;
  BYTE* data = nullptr;
  UINT32 frames = 0;
  DWORD flags = 0;
  UINT64 position = 0;
};

struct RenderSide : OpenStream<IAudioRenderClient, eRender, AUDCLNT_STREAMFLAGS_AUTOCONVERTPCM> {
  using OpenStream::OpenStream;
  void Queue(const std::vector<BYTE>& bytes) {
    frames = static_cast<UINT32>(bytes.size() / frameBytes);
    ASSERT_EQ(service->GetBuffer(frames, &data), S_OK);
    std::memcpy(data, bytes.data(), bytes.size());
    EXPECT_EQ(service->ReleaseBuffer(frames, 0), S_OK);
  }
};

struct CaptureSide : OpenStream<IAudioCaptureClient, eCapture, 0> {
  using OpenStream::OpenStream;
  HRESULT Next() { return service->GetBuffer(&data, &frames, &flags, &position, nullptr); }
  std::vector<BYTE> Drain() {
    std::vector<BYTE> bytes;
    for (; Next() == S_OK; service->ReleaseBuffer(frames)) bytes.insert(bytes.end(), data, data + frames * frameBytes);
    return bytes;
  }
};

class VirtualMachine : public testing::Test {
 protected:
  // A machine on the virtual clock with a speaker and a microphone; the arguments are more keys of theirs and its own.
  static std::string With(const std::string& speaker, const std::string& mic = "", const std::string& own = "") {
    return R"({"clock": "virtual", "endpoints": [{"id": "speaker", "flow": "render", "default": ["console"])" +
           speaker + R"(}, {"id": "mic", "flow": "capture", "default": ["console"])" + mic + "}]" + own + "}";
  }
  bool Become(const std::string& json) { return AudioPlatformInitialize(WriteMachine(directory_, json).c_str()) == 0; }
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
