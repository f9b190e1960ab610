#include "platform/audio_helpers.h"

// What every platform owes its callers, whatever stands behind it. A platform joins with a Backend; it needs an active
// default endpoint of each flow.

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
    ASSERT_EQ(Enumerator()->GetDevice(id.c_str(), device.Receive()), S_OK);
    EXPECT_EQ(IdOf(device), id);
    ComPtr<IPropertyStore> store;
    PROPVARIANT value;
    ASSERT_EQ(device->OpenPropertyStore(STGM_READ, store.Receive()), S_OK);
    ASSERT_EQ(store->GetValue(PKEY_AudioEngine_DeviceFormat, &value), S_OK);
    ASSERT_EQ(value.vt, VT_BLOB);
    EXPECT_EQ(value.blob.cbSize, 18U + reinterpret_cast<const WAVEFORMATEX*>(value.blob.pBlobData)->cbSize);
    EXPECT_EQ(PropVariantClear(&value), S_OK);
    EXPECT_EQ(value.vt, VT_EMPTY);
  }
  EXPECT_EQ(Enumerator()->GetDevice(u"no such endpoint", device.Receive()), E_NOTFOUND);
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
  CaptureSide capture(Format(WAVE_FORMAT_PCM, 1, 48000, 16));
  ASSERT_EQ(capture.client->Start(), S_OK);
  Sleep(200);
  ASSERT_EQ(capture.client->Stop(), S_OK);
  ASSERT_EQ(capture.Next(), S_OK);
  EXPECT_EQ(capture.Next(), AUDCLNT_E_OUT_OF_ORDER);
  EXPECT_EQ(capture.service->ReleaseBuffer(0), S_OK) << "not taken, so it stays the next";
  EXPECT_GE(capture.Drain().size(), 2U * 48 * 100);
  EXPECT_EQ(capture.Next(), AUDCLNT_S_BUFFER_EMPTY);
  EXPECT_EQ(capture.frames, 0U);
}

TEST_P(PlatformContract, KeepsLevelsAndMute) {
  for (const EDataFlow flow : {eRender, eCapture}) {
    const auto volume = Activated<IAudioEndpointVolume>(flow), other = Activated<IAudioEndpointVolume>(flow);
    UINT channels = 0;
    float level = 0.0F;
    BOOL muted = FALSE;
    ASSERT_EQ(volume->GetChannelCount(&channels), S_OK);
    EXPECT_EQ(volume->SetChannelVolumeLevelScalar(channels - 1, 0.375F, nullptr), S_OK);
    EXPECT_EQ(volume->SetChannelVolumeLevelScalar(channels, 0.5F, nullptr), E_INVALIDARG);
    EXPECT_EQ(volume->SetMute(TRUE, nullptr), S_OK);
    EXPECT_EQ(volume->SetMute(TRUE, nullptr), S_FALSE) << "it was so already";
    EXPECT_EQ(other->GetChannelVolumeLevelScalar(channels - 1, &level) | other->GetMute(&muted), S_OK);
    EXPECT_NEAR(level, 0.375F, 0.001);
    EXPECT_EQ(muted, TRUE);
  }
}

std::string DescribeVirtual(const TempDirectory& directory) {
  return WriteMachine(directory, R"({"clock": "virtual", "endpoints": [{"id": "headset", "flow": "render"},
    {"id": "speaker", "flow": "render", "default": ["console"]}, {"id": "off", "flow": "capture", "state": "disabled"},
    {"id": "mic", "flow": "capture", "default": ["console"]}]})");
}
INSTANTIATE_TEST_SUITE_P(Virtual, PlatformContract, testing::Values(DescribeVirtual));

}  // namespace
