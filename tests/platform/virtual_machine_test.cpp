#include <cmath>
#include <cstdlib>
#include <numbers>

#include "tests/platform/audio_helpers.h"

namespace {

// A sound at 48000 Hz in steps: until which millisecond which sample.
std::vector<BYTE> Steps(std::initializer_list<std::pair<std::size_t, std::int16_t>> steps) {
  std::vector<std::int16_t> samples;
  for (const auto& [end, sample] : steps) samples.resize(end * 48, sample);
  return As<BYTE>(samples);
}

TEST_F(VirtualMachine, HearsAToneAtAnyRate) {
  // Played at, recorded at, and the error let pass: the rounding of a sample where none is between two frames.
  const std::tuple<DWORD, DWORD, double> cases[] = {
      {48000, 48000, 0x1p-31}, {48000, 16000, 0x1p-31}, {44100, 48000, 1e-4}, {8000, 192000, 0.02}};
  for (const auto& [played, recorded, bound] : cases) {
    ASSERT_TRUE(Become(With("", R"(, "hears": [{"endpoint": "speaker"}])")));
    const auto tone = [](DWORD i, DWORD rate) { return 0.9 * std::sin(2 * std::numbers::pi * 1200 * i / rate); };
    std::vector<std::int32_t> sound;
    for (DWORD i = 0; i < played; ++i) sound.push_back(static_cast<std::int32_t>(tone(i, played) * 0x1p31));
    const auto heard = As<std::int32_t>(PlayAndRecord(Format(WAVE_FORMAT_PCM, 1, played, 32), As<BYTE>(sound),
                                                      Format(WAVE_FORMAT_PCM, 1, recorded, 32), 1000));
    ASSERT_EQ(heard.size(), recorded);
    double worst = 0.0;
    // At the ends the curve bends towards the silence outside.
    for (DWORD i = 48; i + 48 < recorded; ++i)
      worst = std::max(worst, std::abs(heard[i] * 0x1p-31 - tone(i, recorded)));
    EXPECT_LT(worst, bound) << played << " to " << recorded;
  }
}

TEST_F(VirtualMachine, ReadsAndWritesEveryFormat) {
  using Bytes = std::vector<BYTE>;  // of a frame at 0.5, and at twice that, where integers are clipped
  const std::tuple<WAVEFORMATEXTENSIBLE, Bytes, Bytes> cases[] = {
      {Format(WAVE_FORMAT_PCM, 1, 48000, 8), {0xC0}, {0xFF}},
      {kMono, {0, 0x40}, {0xFF, 0x7F}},
      {Format(WAVE_FORMAT_PCM, 1, 48000, 24), {0, 0, 0x40}, {0xFF, 0xFF, 0x7F}},
      {Format(WAVE_FORMAT_PCM, 1, 48000, 32), {0, 0, 0, 0x40}, {0xFF, 0xFF, 0xFF, 0x7F}},
      {Format(WAVE_FORMAT_EXTENSIBLE, 2, 48000, 16, 12), {0, 0x40, 0, 0x40}, {0xF0, 0x7F, 0xF0, 0x7F}},
      {Format(WAVE_FORMAT_IEEE_FLOAT, 1, 48000, 32), {0, 0, 0, 0x3F}, {0, 0, 0x80, 0x3F}}};
  for (const auto& [format, half, twice] : cases) {
    const bool isFloat = format.Format.wFormatTag == WAVE_FORMAT_IEEE_FLOAT;
    const std::string closest = isFloat ? R"(, "closest": {"tag": "float", "channels": 1})" : "";
    for (const auto& [gain, expected] : {std::pair{"1", half}, {"2", twice}}) {
      ASSERT_TRUE(Become(With("", closest + R"(, "hears": [{"endpoint": "speaker", "gain": )" + gain + "}]")));
      Bytes heard = PlayAndRecord(format, half, format, 10);
      heard.resize(expected.size());
      EXPECT_EQ(heard, expected) << format.Format.wBitsPerSample << " bits";
    }
  }
  // The last machine takes that float format alone.
  WAVEFORMATEX* match = nullptr;
  const auto mic = Activated<IAudioClient>(eCapture);
  EXPECT_EQ(mic->IsFormatSupported(AUDCLNT_SHAREMODE_SHARED, &kMono.Format, &match), S_FALSE);
  EXPECT_EQ(match->wFormatTag, WAVE_FORMAT_IEEE_FLOAT);
  CoTaskMemFree(match);
}

TEST_F(VirtualMachine, AppliesLevelsMuteGainAndDelayWhenTheyHold) {
  const std::string hears = R"(, "levels": [0.5], "format": {"channels": 1},
    "hears": [{"endpoint": "speaker", "gain": 0.5, "delayMs": 4}])";
  ASSERT_TRUE(Become(With(R"(, "levels": [0.25, 0.75])", hears)));
  const auto speaker = Activated<IAudioEndpointVolume>(eRender), mic = Activated<IAudioEndpointVolume>(eCapture);
  RenderSide one(kMono), other(kMono);  // both play 0.25: they add up
  CaptureSide capture(kMono);
  for (RenderSide* render : {&one, &other}) render->Queue(Steps({{1000, 8192}}));
  EXPECT_EQ(capture.client->Start() | one.client->Start() | other.client->Start(), S_OK);
  Sleep(10);
  EXPECT_EQ(speaker->SetChannelVolumeLevelScalar(1, 0.25F, nullptr), S_OK);
  Sleep(10);
  EXPECT_EQ(mic->SetChannelVolumeLevelScalar(0, 1.0F, nullptr), S_OK);
  Sleep(5);
  EXPECT_EQ(mic->SetMute(TRUE, nullptr), S_OK);
  Sleep(5);
  EXPECT_EQ(one.client->Stop() | mic->SetMute(FALSE, nullptr), S_OK);
  Sleep(10);
  EXPECT_EQ(capture.Drain(), Steps({{4, 0}, {14, 2048}, {20, 1024}, {25, 2048}, {30, 0}, {34, 2048}, {40, 1024}}));
}

TEST_F(VirtualMachine, IsSilentWhileARenderStreamIsStoppedOrHasRunDry) {
  ASSERT_TRUE(Become(With("", R"(, "hears": [{"endpoint": "speaker"}])")));
  RenderSide render(kMono);
  CaptureSide capture(kMono);
  render.Queue(Steps({{20, 1000}}));
  EXPECT_EQ(capture.client->Start() | render.client->Start(), S_OK);
  Sleep(5);
  EXPECT_EQ(render.client->Stop(), S_OK);
  Sleep(5);
  EXPECT_EQ(render.client->Start(), S_OK);
  Sleep(20);
  render.Queue(Steps({{2, 2000}}));
  Sleep(1);
  render.Queue(Steps({{2, 3000}}));
  Sleep(9);
  EXPECT_EQ(capture.Drain(), Steps({{5, 1000}, {10, 0}, {25, 1000}, {30, 0}, {32, 2000}, {34, 3000}, {40, 0}}));
  // So long that nanoseconds times frames no longer fit into 64 bits.
  Sleep(4 * 24 * 3600 * 1000);
  capture.Drain();
  render.Queue(Steps({{2, 4000}}));
  Sleep(10);
  EXPECT_EQ(capture.Drain(), Steps({{2, 4000}, {10, 0}}));
}

TEST_F(VirtualMachine, MakesTheSameNoiseOnEveryRunAndLosesItWhenTheBufferIsFull) {
  std::vector<std::vector<BYTE>> runs;
  for (const std::string seed : {"5", "5", "6"}) {
    ASSERT_TRUE(Become(With("", R"(, "noise": 0.25)", R"(, "seed": )" + seed)));
    CaptureSide capture(Format(WAVE_FORMAT_PCM, 1, 44150, 16));
    ASSERT_EQ(capture.client->Start(), S_OK);
    Sleep(1995);
    EXPECT_EQ(capture.Next(), S_OK);
    EXPECT_EQ(capture.service->ReleaseBuffer(0), S_OK);
    runs.push_back(capture.Drain());
    EXPECT_EQ(runs.back().size(), 132450U) << "150 packets, of 441 and 442 frames in turn, fit into 1.5 s";
    int peak = 0;
    for (const int sample : As<std::int16_t>(runs.back())) peak = std::max(peak, std::abs(sample));
    EXPECT_TRUE(peak > 8000 && peak <= 8192) << peak;
    Sleep(30);
    ASSERT_EQ(capture.Next(), S_OK);
    EXPECT_EQ(capture.flags, AUDCLNT_BUFFERFLAGS_DATA_DISCONTINUITY);
    EXPECT_EQ(capture.position, 88300U);
  }
  EXPECT_TRUE(runs[0] == runs[1] && runs[0] != runs[2]);
}

TEST_F(VirtualMachine, FailsAsToldAndChangesNothing) {
  const char* const faults = R"(, "faults": [{"operation": "IMMDevice::GetId", "status": 1},
    {"operation": "IAudioEndpointVolume::SetMute", "call": 2, "status": -5, "sticky": true},
    {"operation": "PropVariantClear", "status": -7}])";
  ASSERT_TRUE(Become(With("", "", faults)));
  const auto speaker = Activated<IAudioEndpointVolume>(eRender), mic = Activated<IAudioEndpointVolume>(eCapture);
  EXPECT_EQ(mic->SetMute(TRUE, nullptr), S_OK);
  EXPECT_EQ(speaker->SetMute(TRUE, nullptr), -5) << "calls count over all objects";
  EXPECT_EQ(speaker->SetMute(TRUE, nullptr), -5);
  BOOL muted = TRUE;
  EXPECT_EQ(speaker->GetMute(&muted), S_OK);
  EXPECT_EQ(muted, FALSE);
  ComPtr<IPropertyStore> store;
  PROPVARIANT name;
  const auto device = DefaultDevice(eRender);
  auto* id = reinterpret_cast<LPWSTR>(&name);
  EXPECT_EQ(device->GetId(&id), 1);
  EXPECT_EQ(id, nullptr);
  EXPECT_EQ(device->GetId(&id), S_OK);
  CoTaskMemFree(id);
  EXPECT_EQ(device->OpenPropertyStore(STGM_READ, store.Receive()), S_OK);
  EXPECT_EQ(store->GetValue(PKEY_Device_FriendlyName, &name), S_OK);
  EXPECT_EQ(PropVariantClear(&name), -7);
  EXPECT_EQ(core_audio::TextFrom(name.pwszVal), u"speaker");
}

TEST_F(VirtualMachine, TracesCallsAndCountsItsObjects) {
  EXPECT_FALSE(Enumerator());
  ASSERT_TRUE(Become(With(R"(, "levels": [0.1])")));
  const auto volume = Activated<IAudioEndpointVolume>(eRender);
  EXPECT_EQ(volume->SetChannelVolumeLevelScalar(3, 0.3F, nullptr), E_INVALIDARG);
  const IID unknown = {0x01234567, 0x89AB, 0xCDEF, {1, 2, 3, 4, 5, 6, 7, 8}};
  void* none = nullptr;
  EXPECT_EQ(DefaultDevice(eRender)->Activate(unknown, CLSCTX_ALL, nullptr, &none), E_NOINTERFACE);
  Sleep(15);
  for (const char* piece :
       {R"({"platform":"virtual","liveObjects":1,"endpoints":[{"id":"speaker","name":"speaker","flow":"render",)",
        R"({"id":"mic","name":"mic","flow":"capture","state":"active",)",
        R"("state":"active","default":["console"],"levels":[0.1],"muted":false,"format":{"channels":2,"rate":48000,)",
        R"("trace":[{"operation":"CoCreateInstance","arguments":{"interface":"IMMDeviceEnumerator"},"status":0},)",
        R"("interface":"{01234567-89AB-CDEF-0102-030405060708}")",
        R"(Scalar","endpoint":"speaker","arguments":{"channel":3,"level":0.3},"status":-2147024809},)",
        R"({"operation":"Sleep","arguments":{"milliseconds":15},"status":0}]})"}) {
    EXPECT_NE(State().find(piece), std::string::npos) << piece << '\n' << State();
  }
  for (int call = 0; call < 100'000; ++call) Sleep(0);
  EXPECT_EQ(volume->SetMute(TRUE, nullptr), S_OK);
  const std::string state = State();
  EXPECT_EQ(state.find("SetMute"), std::string::npos);
  const std::size_t count = state.rfind("\"untracedCalls\":");
  ASSERT_NE(count, std::string::npos);
  EXPECT_EQ(state.substr(count), "\"untracedCalls\":9}");
  AudioPlatformUninitialize();
  UINT channels = 0;
  EXPECT_EQ(volume->GetChannelCount(&channels), S_OK) << "objects outlive their platform";
}

TEST_F(VirtualMachine, CarriesOutAnObserversCallsButNeitherTracesNorCountsThem) {
  ASSERT_TRUE(Become(With("", R"(, "hears": [{"endpoint": "speaker"}])", R"(, "faults": [
    {"operation": "IAudioEndpointVolume::SetMute", "status": -5}, {"operation": "IMMDevice::GetId", "status": -5}])")));
  const std::string before = State();
  ComPtr<IMMDeviceEnumerator> observer;
  ASSERT_EQ(CoCreateInstance(core_audio::ObserverEnumeratorClass(), nullptr, CLSCTX_ALL, IID_IMMDeviceEnumerator,
                             observer.ReceiveAny()),
            S_OK);
  ComPtr<IMMDevice> device;
  ComPtr<IPropertyStore> store;
  ComPtr<IAudioClient> client;
  ComPtr<IAudioCaptureClient> service;
  ComPtr<IAudioEndpointVolume> volume;
  PROPVARIANT name;
  LPWSTR id = nullptr;
  UINT32 frames = 0;
  EXPECT_EQ(observer->GetDefaultAudioEndpoint(eCapture, eConsole, device.Receive()), S_OK);
  EXPECT_EQ(device->GetId(&id), S_OK);
  CoTaskMemFree(id);
  EXPECT_EQ(device->OpenPropertyStore(STGM_READ, store.Receive()), S_OK);
  EXPECT_EQ(store->GetValue(PKEY_Device_FriendlyName, &name), S_OK);
  CoTaskMemFree(name.pwszVal);
  EXPECT_EQ(device->Activate(InterfaceId<IAudioClient>(), CLSCTX_ALL, nullptr, client.ReceiveAny()), S_OK);
  EXPECT_EQ(client->Initialize(AUDCLNT_SHAREMODE_SHARED, 0, 0, 0, &kMono.Format, nullptr), S_OK);
  EXPECT_EQ(client->GetService(InterfaceId<IAudioCaptureClient>(), service.ReceiveAny()), S_OK);
  EXPECT_EQ(client->Start() | service->GetNextPacketSize(&frames), S_OK);
  EXPECT_EQ(device->Activate(InterfaceId<IAudioEndpointVolume>(), CLSCTX_ALL, nullptr, volume.ReceiveAny()), S_OK);
  EXPECT_EQ(volume->SetMute(TRUE, nullptr) | volume->SetMute(FALSE, nullptr), S_OK);
  EXPECT_EQ(State(), before);
  EXPECT_EQ(volume->SetMute(TRUE, nullptr), S_OK);
  EXPECT_NE(State().find(R"("muted":true)"), std::string::npos) << "it is carried out on the same machine";
  EXPECT_EQ(Activated<IAudioEndpointVolume>(eCapture)->SetMute(FALSE, nullptr), -5) << "its first call that counts";
}

TEST_F(VirtualMachine, RefusesADescriptionWithAMistake) {
  const auto path = [](const char* condition) { return With("", ", \"path\": [{" + std::string(condition) + "}]"); };
  const std::pair<std::string, const char*> cases[] = {
      {"{\n \"clock\": \"virtual\",\n}", "line 3, column 1: not JSON: syntax error while parsing object key"},
      {"{\n\"seed\": 1e999}", "line 2, column 13: a number is too large"},
      {std::string(300000, '['), "line 1, column 300001: not JSON"},
      {std::string(300000, '[') + std::string(300000, ']'), "the description: must be an object, not a list"},
      {"[]", "the description: must be an object, not a list"},
      {R"({"clok": 1})", R"(clok: is not a key; the keys here are "clock", "seed", "endpoints", "faults")"},
      {With(R"(, "nam": "")"),
       "endpoints[0].nam: is not a key; the keys here are \"id\", \"name\", \"flow\", \"state\", "
       R"("default", "levels", "muted", "noise", "format", "closest", "hears", "path")"},
      {With("", R"(, "format": {"x": 1})"),
       "endpoints[1].format.x: is not a key; the keys here are "
       R"("tag", "channels", "rate", "bits", "validBits", "channelMask")"},
      {R"({"faults": [{"x": 1}]})",
       R"(faults[0].x: is not a key; the keys here are "operation", "call", "status", "sticky", )"},
      {With("", "", R"(, "clock": "real")"), "clock: stands there twice"},
      {With("", R"(, "levels": [1], "hears": [{"gain": 1, "gain": 1}])"),
       "endpoints[1].hears[0].gain: stands there twice"},
      {R"({"endpoints": [{"id": "a\u0000b"}]})", "endpoints[0].id: must be Unicode"},
      {With(R"(, "state": "lost")"), R"(endpoints[0].state: must be one of "active", "disabled", )"},
      {With(R"(, "levels": [0.5, 1.5])"), "endpoints[0].levels[1]: must be a number from 0.0 to 1.0, not 1.5"},
      {With("", R"(, "format": {"rate": "x"})"),
       "endpoints[1].format.rate: must be a whole number from 1000 to 384000, not \"x\""},
      {With(R"(, "format": {"bits": 20})"), "endpoints[0].format.bits: must be 8"},
      {With(R"(, "noise": 0.5)"), "endpoints[0].noise: only a capture endpoint"},
      {With(R"(, "state": "disabled")"), "endpoints[0].default[0]: an endpoint that isn't active"},
      {With(R"(}, {"id": "speaker", "flow": "capture")"), "endpoints[1].id: another"},
      {With(R"(}, {"id": "a", "flow": "render", "default": ["console"])"), "endpoints[1].default[0]: this role's"},
      {With(R"(, "path": [])"), "endpoints[0].path: only a capture endpoint"},
      {path(R"("kind": "wow")"), "endpoints[1].path[0].kind: must be one of \"speed\", "},
      {path(R"("kind": "gap", "atMs": 1)"), "endpoints[1].path[0].lengthMs: must be given"},
      {path(R"("kind": "cut", "atMs": 1, "lengthMs": 1)"), "endpoints[1].path[0].lengthMs: is not a key"},
      {path(R"("kind": "cut", "atMs": -0.5)"), "endpoints[1].path[0].atMs: must be a number from 0.0 to 3600000.0"},
      {path(R"("kind": "clip", "level": -0.5)"), "endpoints[1].path[0].level: must be a number from 0.0 to 1.0"},
      {path(R"("kind": "dead", "channel": 2)"), "endpoints[1].path[0].channel: must be a whole number from 0 to 1"},
      {path(R"("kind": "speed", "ratio": 1}, {"kind": "speed", "ratio": 1)"), "endpoints[1].path[1].kind: a path has"},
      {With("", R"(, "hears": [{"endpoint": "b"}])"), "endpoints[1].hears[0].endpoint: no endpoint has this id"},
      {With("", R"(, "hears": [{"endpoint": "mic"}])"), "endpoints[1].hears[0].endpoint: is not a render"},
      {R"({"faults": [{"operation": "Sleep", "status": -1}]})", "faults[0].operation: Sleep has no status"},
      {R"({"faults": [{"operation": "IAudioClient::Go", "status": 1}]})", "faults[0].operation: must be one of \"CoC"},
      {R"({"faults": [{"operation": "IAudioClient::Start", "status": 0}]})", "faults[0].status: must not be 0"}};
  ASSERT_TRUE(Become(With("")));
  const std::string before = State();
  for (const auto& [json, sentence] : cases) {
    EXPECT_FALSE(Become(json)) << json;
    EXPECT_EQ(std::string(AudioPlatformError()).rfind(sentence, 0), 0U) << json << '\n' << AudioPlatformError();
  }
  EXPECT_TRUE(Become(With("") + std::string((std::size_t{1} << 24) - With("").size(), ' '))) << "16 MiB, the most";
  ASSERT_TRUE(Become(With("")));
  for (const char* name : {"virtual:/no/such/file", "virtual:/", "virtuall", ""}) {
    EXPECT_LT(AudioPlatformInitialize(name), 0) << name;
    EXPECT_STRNE(AudioPlatformError(), "") << name;
  }
  EXPECT_EQ(State(), before) << "a refused description leaves the thread where it was";
}

}  // namespace
