#include <bit>
#include <cmath>
#include <cstdlib>
#include <tuple>

#include "tests/platform/audio_helpers.h"

// What every platform owes its callers, whatever stands behind it. A platform joins with a Backend; it needs an active
// default endpoint of each flow with two channels at 48000 Hz, where the capture endpoint hears the render endpoint.

namespace {

// Gives the description of a platform, which may lie in the directory.
using Backend = std::string (*)(const TempDirectory&);

class PlatformContract : public testing::TestWithParam<Backend> {
  void SetUp() override { ASSERT_EQ(AudioPlatformInitialize(GetParam()(directory_).c_str()), 0); }
  void TearDown() override { AudioPlatformUninitialize(); }
  TempDirectory directory_;
};

std::u16string IdOf(const ComPtr<IMMDevice>& device) {
  LPWSTR text = nullptr;
  EXPECT_EQ(device->GetId(&text), S_OK);
  std::u16string id = core_audio::TextFrom(text);
  CoTaskMemFree(text);
  return id;
}

const WAVEFORMATEXTENSIBLE kStereo = Format(WAVE_FORMAT_PCM, 2, 48000, 16);

void SetVolume(EDataFlow flow, BOOL muted, float level) {
  const auto volume = Activated<IAudioEndpointVolume>(flow);
  EXPECT_GE(volume->SetMute(muted, nullptr), S_OK);
  for (const UINT channel : {0U, 1U}) EXPECT_EQ(volume->SetChannelVolumeLevelScalar(channel, level, nullptr), S_OK);
}

TEST_P(PlatformContract, FindsAndDescribesEndpoints) {
  ComPtr<IMMDevice> device;
  for (const EDataFlow flow : {eRender, eCapture}) {
    const std::u16string id = IdOf(DefaultDevice(flow));
    ComPtr<IMMDeviceCollection> active;
    ASSERT_EQ(Enumerator()->EnumAudioEndpoints(flow, DEVICE_STATE_ACTIVE, active.Receive()), S_OK);
    UINT same = 0, index = 0, count = 0;
    for (; active->Item(index, device.Receive()) == S_OK; ++index) same += IdOf(device) == id;
    EXPECT_EQ(active->GetCount(&count), S_OK);
    EXPECT_EQ(count, index);
    EXPECT_EQ(same, 1U);
    ASSERT_EQ(Enumerator()->GetDevice(Wide(id.c_str()), device.Receive()), S_OK);
    EXPECT_EQ(IdOf(device), id);
    ComPtr<IPropertyStore> store;
    PROPVARIANT value;
    ASSERT_EQ(device->OpenPropertyStore(STGM_READ, store.Receive()), S_OK);
    ASSERT_EQ(store->GetValue(PKEY_AudioEngine_DeviceFormat, &value), S_OK);
    ASSERT_EQ(value.vt, VT_BLOB);
    const auto* const format = reinterpret_cast<const WAVEFORMATEX*>(value.blob.pBlobData);
    EXPECT_EQ(value.blob.cbSize, 18U + format->cbSize);
    if (format->wFormatTag == WAVE_FORMAT_EXTENSIBLE) {
      const DWORD places = reinterpret_cast<const WAVEFORMATEXTENSIBLE*>(format)->dwChannelMask;
      EXPECT_EQ(std::popcount(places), format->nChannels) << "each channel has its place";
    }
    WAVEFORMATEX* match = nullptr;
    EXPECT_EQ(Activated<IAudioClient>(flow)->IsFormatSupported(AUDCLNT_SHAREMODE_SHARED, format, &match), S_OK);
    EXPECT_EQ(match, nullptr);
    DWORD state = 0;
    EXPECT_EQ(device->GetState(&state), S_OK);
    EXPECT_EQ(state, DWORD{DEVICE_STATE_ACTIVE});
    EXPECT_EQ(PropVariantClear(&value), S_OK);
    EXPECT_EQ(value.vt, VT_EMPTY);
  }
  EXPECT_EQ(Enumerator()->GetDevice(Wide(u"no such endpoint"), device.Receive()), E_NOTFOUND);
  EXPECT_FALSE(device);
}

TEST_P(PlatformContract, PlaysWhatIsQueuedWhileItRuns) {
  EXPECT_EQ(Activated<IAudioClient>(eRender)->Start(), AUDCLNT_E_NOT_INITIALIZED);
  RenderSide render(Format(WAVE_FORMAT_PCM, 1, 44100, 16));
  UINT32 size = 0, padding = 0;
  ASSERT_EQ(render.client->GetBufferSize(&size), S_OK);
  EXPECT_GE(size, 66150U);
  EXPECT_EQ(render.service->GetBuffer(size + 1, &render.data), AUDCLNT_E_BUFFER_TOO_LARGE);
  EXPECT_EQ(render.service->GetBuffer(size, &render.data), S_OK);
  EXPECT_EQ(render.service->GetBuffer(1, &render.data), AUDCLNT_E_OUT_OF_ORDER);
  EXPECT_EQ(render.service->ReleaseBuffer(size + 1, 0), AUDCLNT_E_INVALID_SIZE);
  EXPECT_EQ(render.service->ReleaseBuffer(4410, AUDCLNT_BUFFERFLAGS_SILENT), S_OK);
  Sleep(20);
  EXPECT_EQ(render.client->GetCurrentPadding(&padding), S_OK);
  EXPECT_EQ(padding, 4410U) << "nothing plays before Start";
  EXPECT_EQ(render.client->Start(), S_OK);
  EXPECT_EQ(render.client->Start(), AUDCLNT_E_NOT_STOPPED);
  for (int poll = 0; poll < 500 && padding != 0; ++poll) {
    Sleep(10);
    ASSERT_EQ(render.client->GetCurrentPadding(&padding), S_OK);
  }
  EXPECT_EQ(padding, 0U);
  EXPECT_EQ(render.client->Stop(), S_OK);
  EXPECT_EQ(render.client->Stop(), S_FALSE);
}

TEST_P(PlatformContract, KeepsCapturedPacketsUntilTheyAreReleased) {
  CaptureSide capture(kStereo);
  UINT32 next = 1;
  EXPECT_EQ(capture.Next(), AUDCLNT_S_BUFFER_EMPTY);
  ASSERT_EQ(capture.client->Start(), S_OK);
  Sleep(200);
  ASSERT_EQ(capture.client->Stop(), S_OK);
  ASSERT_EQ(capture.Next(), S_OK);
  EXPECT_EQ(capture.Next(), AUDCLNT_E_OUT_OF_ORDER);
  EXPECT_EQ(capture.service->ReleaseBuffer(479), AUDCLNT_E_INVALID_SIZE);
  EXPECT_EQ(capture.service->ReleaseBuffer(0), S_OK) << "not taken, so it stays the next";
  UINT64 packets = 0;
  for (; capture.Next() == S_OK; ++packets) {
    EXPECT_EQ(capture.frames, 480U);
    EXPECT_EQ(capture.position, packets * 480);
    EXPECT_EQ(capture.service->ReleaseBuffer(capture.frames), S_OK);
  }
  EXPECT_GE(packets, 10U);
  EXPECT_EQ(capture.Next(), AUDCLNT_S_BUFFER_EMPTY);
  EXPECT_EQ(capture.frames, 0U);
  EXPECT_EQ(capture.service->GetNextPacketSize(&next), S_OK);
  EXPECT_EQ(next, 0U);
}

TEST_P(PlatformContract, HearsWhatItPlaysOnEveryStreamUnlessMuted) {
  std::vector<BYTE> sound(44100);  // half a second of a square wave of half the full scale, at 1050 Hz
  for (std::size_t i = 0; i < sound.size(); i += 2) sound[i + 1] = i / 42 % 2 == 0 ? 0x40 : 0xC0;
  for (const EDataFlow flow : {eRender, eCapture}) SetVolume(flow, FALSE, 1.0F);
  for (const auto& [muted, lowest, highest] : {std::tuple{FALSE, 0.45, 0.7}, {TRUE, 0.0, 0.0}}) {
    SetVolume(eRender, muted, 1.0F);
    RenderSide render(Format(WAVE_FORMAT_PCM, 1, 44100, 16));
    CaptureSide one(kStereo), other(kStereo);
    render.Queue(sound);
    ASSERT_EQ(one.client->Start() | other.client->Start() | render.client->Start(), S_OK);
    UINT32 padding = 1;
    for (int poll = 0; poll < 500 && padding != 0; ++poll, Sleep(10)) {
      ASSERT_EQ(render.client->GetCurrentPadding(&padding), S_OK);
    }
    ASSERT_EQ(padding, 0U);
    for (CaptureSide* capture : {&one, &other}) {
      ASSERT_EQ(capture->client->Stop(), S_OK);
      double peak = 0.0;
      const std::vector<BYTE> heard = capture->Drain();
      EXPECT_GE(heard.size(), 400U * 192) << "of half a second, played while it was captured";
      for (std::size_t i = 0; i < heard.size(); i += 2) {
        peak = std::max(peak, std::abs(static_cast<std::int16_t>(heard[i] | heard[i + 1] << 8) / 32768.0));
      }
      EXPECT_GE(peak, lowest);
      EXPECT_LE(peak, highest);
    }
  }
  SetVolume(eRender, FALSE, 1.0F);
}

TEST_P(PlatformContract, RefusesWhatIsOutOfOrderOrMakesNoSense) {
  const auto client = Activated<IAudioClient>(eCapture);
  const auto initialize = [&](AUDCLNT_SHAREMODE mode, DWORD flags, REFERENCE_TIME duration,
                              const WAVEFORMATEX* format) {
    return client->Initialize(mode, flags, duration, 0, format, nullptr);
  };
  EXPECT_EQ(initialize(AUDCLNT_SHAREMODE_SHARED, 0, 0, nullptr), E_POINTER);
  EXPECT_EQ(initialize(AUDCLNT_SHAREMODE_EXCLUSIVE, 0, 0, &kStereo.Format), AUDCLNT_E_EXCLUSIVE_MODE_NOT_ALLOWED);
  EXPECT_EQ(initialize(AUDCLNT_SHAREMODE_SHARED, 1, 0, &kStereo.Format), E_INVALIDARG);
  EXPECT_EQ(initialize(AUDCLNT_SHAREMODE_SHARED, 0, -1, &kStereo.Format), E_INVALIDARG);
  for (const auto& [channels, bits] : {std::pair<WORD, WORD>{0, 16}, {2, 12}, {2, 40}}) {
    const WAVEFORMATEX wrong = Format(WAVE_FORMAT_PCM, channels, 48000, bits).Format;
    EXPECT_EQ(initialize(AUDCLNT_SHAREMODE_SHARED, 0, 0, &wrong), AUDCLNT_E_UNSUPPORTED_FORMAT) << bits;
  }
  const bool takesAny = State().find(R"("platform":"virtual")") != std::string::npos;
  for (const auto& [channels, rate] : {std::pair<WORD, DWORD>{1, 48000}, {2, 44100}}) {
    const WAVEFORMATEX other = Format(WAVE_FORMAT_PCM, channels, rate, 16).Format;
    WAVEFORMATEX* own = nullptr;
    const HRESULT taken = client->IsFormatSupported(AUDCLNT_SHAREMODE_SHARED, &other, &own);
    EXPECT_EQ(taken, takesAny ? S_OK : S_FALSE);
    if (taken != S_FALSE) continue;
    EXPECT_EQ(initialize(AUDCLNT_SHAREMODE_SHARED, 0, 0, &other), AUDCLNT_E_UNSUPPORTED_FORMAT);
    EXPECT_EQ(std::pair(own->nChannels, own->nSamplesPerSec), (std::pair<WORD, DWORD>{2, 48000}));
    CoTaskMemFree(own);
  }
  UINT32 frames = 0;
  ComPtr<IUnknown> service;
  EXPECT_EQ(client->GetBufferSize(&frames), AUDCLNT_E_NOT_INITIALIZED);
  EXPECT_EQ(client->GetService(InterfaceId<IAudioCaptureClient>(), service.ReceiveAny()), AUDCLNT_E_NOT_INITIALIZED);
  EXPECT_EQ(initialize(AUDCLNT_SHAREMODE_SHARED, 0, 0, &kStereo.Format), S_OK);
  EXPECT_EQ(initialize(AUDCLNT_SHAREMODE_SHARED, 0, 0, &kStereo.Format), AUDCLNT_E_ALREADY_INITIALIZED);
  EXPECT_EQ(client->GetBufferSize(nullptr), E_POINTER);
  EXPECT_EQ(client->GetService(InterfaceId<IAudioRenderClient>(), service.ReceiveAny()), AUDCLNT_E_WRONG_ENDPOINT_TYPE);
  EXPECT_EQ(client->GetService(InterfaceId<IMMDevice>(), service.ReceiveAny()), E_NOINTERFACE);
  EXPECT_FALSE(service);
}

TEST_P(PlatformContract, KeepsLevelsAndMuteExactly) {
  for (const EDataFlow flow : {eRender, eCapture}) {
    const auto volume = Activated<IAudioEndpointVolume>(flow), other = Activated<IAudioEndpointVolume>(flow);
    UINT channels = 0;
    ASSERT_EQ(volume->GetChannelCount(&channels), S_OK);
    ASSERT_EQ(channels, 2U);
    for (const float level : {0.0F, 1.0F, 0.375F, 12345.0F / 65536, 65535.0F / 65536, 1.0F / 65536}) {
      float first = 2.0F, second = 2.0F;
      EXPECT_EQ(volume->SetChannelVolumeLevelScalar(0, level, nullptr), S_OK);
      EXPECT_EQ(volume->SetChannelVolumeLevelScalar(1, 1.0F - level, nullptr), S_OK);
      EXPECT_EQ(other->GetChannelVolumeLevelScalar(0, &first) | other->GetChannelVolumeLevelScalar(1, &second), S_OK);
      EXPECT_EQ(first, level);
      EXPECT_EQ(second, 1.0F - level);
    }
    for (const float level : {-0.5F, std::nanf("")}) {
      EXPECT_EQ(volume->SetChannelVolumeLevelScalar(0, level, nullptr), E_INVALIDARG);
    }
    EXPECT_EQ(volume->SetChannelVolumeLevelScalar(channels, 0.5F, nullptr), E_INVALIDARG);
    for (const BOOL wanted : {TRUE, FALSE}) {
      BOOL muted = !wanted;
      SetVolume(flow, !wanted, 1.0F);
      EXPECT_EQ(volume->SetMute(wanted, nullptr), S_OK);
      EXPECT_EQ(volume->SetMute(wanted, nullptr), S_FALSE) << "it was so already";
      EXPECT_EQ(other->GetMute(&muted), S_OK);
      EXPECT_EQ(muted, wanted);
    }
  }
}

TEST_P(PlatformContract, ObjectsOutliveThePlatform) {
  const auto volume = Activated<IAudioEndpointVolume>(eRender);
  RenderSide render(Format(WAVE_FORMAT_PCM, 1, 44100, 16));
  AudioPlatformUninitialize();
  EXPECT_FALSE(Enumerator());
  BOOL muted = FALSE;
  EXPECT_EQ(volume->GetMute(&muted), S_OK);
  EXPECT_EQ(render.client->Start(), S_OK);
  EXPECT_EQ(render.client->Stop(), S_OK);
}

std::string DescribeVirtual(const TempDirectory& directory) {
  return WriteMachine(directory, R"({"clock": "virtual", "endpoints": [{"id": "headset", "flow": "render"},
    {"id": "speaker", "flow": "render", "default": ["console"]}, {"id": "off", "flow": "capture", "state": "disabled"},
    {"id": "mic", "flow": "capture", "default": ["console"], "hears": [{"endpoint": "speaker"}]}]})");
}
INSTANTIATE_TEST_SUITE_P(Virtual, PlatformContract, testing::Values(DescribeVirtual));

// The server of support/sound_server.py, when the program is run with one.
std::string DescribeSoundServer(const TempDirectory&) { return "pulse"; }
std::vector<Backend> SoundServer() {
  return std::getenv("ZQRMT_SOUND_SERVER") == nullptr ? std::vector<Backend>()
                                                      : std::vector<Backend>{DescribeSoundServer};
}
INSTANTIATE_TEST_SUITE_P(SoundServer, PlatformContract, testing::ValuesIn(SoundServer()));

}  // namespace
