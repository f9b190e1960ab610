// What the objects that callers hold refuse, whatever audio system stands behind them, and what they hand out then: nothing.

#include "tests/platform/audio_helpers.h"

namespace {

using Refusals = VirtualMachine;

// The first numbers behind those that mean something.
constexpr auto kNoFlow = static_cast<EDataFlow>(3);
constexpr auto kNoRole = static_cast<ERole>(3);

TEST_F(Refusals, OfNoPlaceForTheResultAndOfWhatIsNotThere) {
  ASSERT_TRUE(Become(With("", R"(}, {"id": "off", "flow": "capture", "state": "disabled")")));
  const auto enumerator = Enumerator();
  ComPtr<IMMDeviceCollection> devices;
  EXPECT_EQ(enumerator->EnumAudioEndpoints(eRender, DEVICE_STATE_ACTIVE, nullptr), E_POINTER);
  EXPECT_EQ(enumerator->EnumAudioEndpoints(kNoFlow, DEVICE_STATE_ACTIVE, devices.Receive()), E_INVALIDARG);
  EXPECT_EQ(enumerator->EnumAudioEndpoints(eRender, DEVICE_STATEMASK_ALL + 1, devices.Receive()), E_INVALIDARG);
  EXPECT_FALSE(devices);
  ASSERT_EQ(enumerator->EnumAudioEndpoints(eAll, DEVICE_STATEMASK_ALL, devices.Receive()), S_OK);
  UINT count = 0;
  EXPECT_EQ(devices->GetCount(nullptr), E_POINTER);
  EXPECT_EQ(devices->GetCount(&count), S_OK);
  EXPECT_EQ(count, 3U);
  EXPECT_EQ(devices->Item(0, nullptr), E_POINTER);

  const ComPtr<IMMDevice> speaker = DefaultDevice(eRender);
  IMMDevice* device = speaker.Get();
  EXPECT_EQ(devices->Item(count, &device), E_INVALIDARG);
  EXPECT_EQ(device, nullptr);
  EXPECT_EQ(enumerator->GetDefaultAudioEndpoint(eRender, eConsole, nullptr), E_POINTER);
  for (const auto& [flow, role] : {std::pair{eAll, eConsole}, {kNoFlow, eConsole}, {eRender, kNoRole}}) {
    EXPECT_EQ(enumerator->GetDefaultAudioEndpoint(flow, role, &(device = speaker.Get())), E_INVALIDARG);
    EXPECT_EQ(device, nullptr);
  }
  EXPECT_EQ(enumerator->GetDefaultAudioEndpoint(eRender, eCommunications, &(device = speaker.Get())), E_NOTFOUND);
  EXPECT_EQ(device, nullptr);
  EXPECT_EQ(enumerator->GetDevice(nullptr, &(device = speaker.Get())), E_POINTER);
  EXPECT_EQ(device, nullptr);
  EXPECT_EQ(enumerator->GetDevice(Wide(u"speaker"), nullptr), E_POINTER);
  EXPECT_EQ(CoCreateInstance(CLSID_MMDeviceEnumerator, nullptr, CLSCTX_ALL, IID_IMMDeviceEnumerator, nullptr),
            E_POINTER);

  ComPtr<IMMDevice> off;
  ASSERT_EQ(enumerator->GetDevice(Wide(u"off"), off.Receive()), S_OK);
  DWORD state = 0;
  EXPECT_EQ(off->GetState(&state), S_OK);
  EXPECT_EQ(state, DWORD{DEVICE_STATE_DISABLED});
  EXPECT_EQ(off->GetState(nullptr), E_POINTER);
  EXPECT_EQ(off->GetId(nullptr), E_POINTER);
  void* object = this;
  EXPECT_EQ(off->Activate(InterfaceId<IAudioClient>(), CLSCTX_ALL, nullptr, &object), AUDCLNT_E_DEVICE_INVALIDATED);
  EXPECT_EQ(object, nullptr);
  EXPECT_EQ(speaker->Activate(InterfaceId<IMMDevice>(), CLSCTX_ALL, nullptr, &(object = this)), E_NOINTERFACE);
  EXPECT_EQ(object, nullptr);
  EXPECT_EQ(speaker->Activate(InterfaceId<IAudioClient>(), CLSCTX_ALL, nullptr, nullptr), E_POINTER);
  IPropertyStore* store = nullptr;
  EXPECT_EQ(off->OpenPropertyStore(STGM_READ, nullptr), E_POINTER);
  EXPECT_EQ(off->OpenPropertyStore(STGM_READ + 1, &store), E_INVALIDARG);
  ASSERT_EQ(off->OpenPropertyStore(STGM_READ, &store), S_OK);
  const ComPtr<IPropertyStore> owned(store);
  PROPVARIANT value;
  EXPECT_EQ(store->GetValue(PKEY_Device_FriendlyName, nullptr), E_POINTER);
  EXPECT_EQ(store->GetValue({{}, 1}, &value), S_OK);
  EXPECT_EQ(value.vt, VT_EMPTY);
}

TEST_F(Refusals, OfStreamsAndTheirBuffers) {
  ASSERT_TRUE(Become(With("")));
  RenderSide render(kMono);
  CaptureSide capture(kMono);
  EXPECT_EQ(render.client->GetCurrentPadding(nullptr), E_POINTER);
  EXPECT_EQ(render.client->GetService(InterfaceId<IAudioRenderClient>(), nullptr), E_POINTER);
  EXPECT_EQ(render.client->GetService(InterfaceId<IAudioCaptureClient>(), capture.service.ReceiveAny()),
            AUDCLNT_E_WRONG_ENDPOINT_TYPE);
  ASSERT_EQ(capture.client->GetService(InterfaceId<IAudioCaptureClient>(), capture.service.ReceiveAny()), S_OK);
  EXPECT_EQ(render.service->GetBuffer(1, nullptr), E_POINTER);
  EXPECT_EQ(render.service->ReleaseBuffer(0, 4), E_INVALIDARG);
  EXPECT_EQ(render.service->ReleaseBuffer(1, 0), AUDCLNT_E_OUT_OF_ORDER);
  BYTE* area = nullptr;
  EXPECT_EQ(render.service->GetBuffer(1, &area) | render.service->ReleaseBuffer(0, 0), S_OK);
  EXPECT_EQ(render.service->GetBuffer(0, &area), S_OK);
  EXPECT_EQ(area, nullptr);
  WAVEFORMATEX* match = nullptr;
  EXPECT_EQ(render.client->IsFormatSupported(AUDCLNT_SHAREMODE_SHARED, nullptr, &match), E_POINTER);
  EXPECT_EQ(render.client->IsFormatSupported(AUDCLNT_SHAREMODE_SHARED, &kMono.Format, nullptr), E_POINTER);
  EXPECT_EQ(render.client->IsFormatSupported(AUDCLNT_SHAREMODE_EXCLUSIVE, &kMono.Format, &match),
            AUDCLNT_E_UNSUPPORTED_FORMAT);

  ASSERT_EQ(capture.client->Start(), S_OK);
  Sleep(30);
  EXPECT_EQ(capture.service->GetNextPacketSize(nullptr), E_POINTER);
  EXPECT_EQ(capture.service->GetBuffer(nullptr, &capture.frames, &capture.flags, nullptr, nullptr), E_POINTER);
  EXPECT_EQ(capture.service->GetBuffer(&capture.data, nullptr, &capture.flags, nullptr, nullptr), E_POINTER);
  EXPECT_EQ(capture.service->GetBuffer(&capture.data, &capture.frames, nullptr, nullptr, nullptr), E_POINTER);
  UINT64 times[2] = {};
  for (UINT64& time : times) {
    ASSERT_EQ(capture.service->GetBuffer(&capture.data, &capture.frames, &capture.flags, nullptr, &time), S_OK);
    ASSERT_EQ(capture.service->ReleaseBuffer(480), S_OK);
  }
  EXPECT_EQ(times[1] - times[0], 100000U) << "10 ms, in units of 100 ns";

  const auto volume = Activated<IAudioEndpointVolume>(eRender);
  float level = 0.0F;
  EXPECT_EQ(volume->GetChannelCount(nullptr), E_POINTER);
  EXPECT_EQ(volume->GetMute(nullptr), E_POINTER);
  EXPECT_EQ(volume->GetChannelVolumeLevelScalar(0, nullptr), E_POINTER);
  EXPECT_EQ(volume->GetChannelVolumeLevelScalar(2, &level), E_INVALIDARG);
}

TEST_F(Refusals, OfBuffersThatAreTooLong) {
  ASSERT_TRUE(Become(With("")));
  const std::tuple<REFERENCE_TIME, HRESULT, UINT32> cases[] = {
      {0, S_OK, 960}, {200001, S_OK, 961}, {10000000, S_OK, 48000}, {36000000001, E_OUTOFMEMORY, 0}};
  for (const auto& [duration, status, frames] : cases) {
    const auto client = Activated<IAudioClient>(eRender);
    UINT32 size = 0;
    EXPECT_EQ(client->Initialize(AUDCLNT_SHAREMODE_SHARED, 0, duration, 1, &kMono.Format, nullptr), E_INVALIDARG);
    EXPECT_EQ(client->Initialize(AUDCLNT_SHAREMODE_SHARED, 0, duration, 0, &kMono.Format, nullptr), status);
    EXPECT_EQ(client->GetBufferSize(&size), status == S_OK ? S_OK : AUDCLNT_E_NOT_INITIALIZED);
    EXPECT_EQ(size, frames) << duration;
  }
}

}  // namespace
