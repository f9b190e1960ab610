#include <gtest/gtest.h>
#include <signal.h>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <thread>

#include "tests/platform/audio_helpers.h"
#include "tests/support/module_under_test.h"
#include "tests/support/process.h"

// The module on the private sound server of support/sound_server.py. Each test has a server of its own, because most of
// them change or kill it.

namespace {

constexpr const char* kPlay = R"({"CoreData":{"DeviceInfo":{"DeviceInstanceID":"speaker"}}})";
constexpr const char* kRecord =
    R"({"CoreData":{"DeviceInfo":{"DeviceInstanceID":"mic","AudioData":{"targetDevice":"speaker"}}}})";

pid_t ServerProcess() { return std::atoi(std::getenv("ZQRMT_SOUND_SERVER_PID")); }
bool IsPulseAudio() { return std::string(std::getenv("ZQRMT_SOUND_SERVER")) == "pulseaudio"; }

std::string State() {
  const std::unique_ptr<char, decltype(&std::free)> text(AudioPlatformState(), &std::free);
  return text.get();
}

bool Contains(const std::string& text, const std::string& piece) { return text.find(piece) != text.npos; }

double Amplitude(const std::string& reply) {
  constexpr std::string_view kKey = R"("maxAmplitude":)";
  return std::atof(reply.c_str() + reply.find(kKey) + kKey.size());
}

class SoundServer : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(AudioPlatformInitialize("pulse"), 0) << AudioPlatformError(); }
  ModuleUnderTest module_;
};

TEST_F(SoundServer, IsTestedAtFullLevelAndLeftAsItWas) {
  ASSERT_EQ(std::system("pactl set-sink-volume speaker 16384 49152 && pactl set-sink-mute speaker 1 &&"
                        "pactl set-source-volume mic 12345 81920 && pactl set-source-mute mic 1"),
            0);
  const std::string before = State();
  EXPECT_TRUE(
      Contains(before, R"("default":["console","multimedia","communications"],"levels":[0.25,0.75],"muted":true)"));
  EXPECT_TRUE(Contains(before, R"("levels":[0.18836975,1.25],"muted":true)"));
  EXPECT_TRUE(Contains(module_.Play(kPlay), ReturnCode(ZQRMT_RETURN_PLAYBACK_PASSED)));
  EXPECT_EQ(State(), before);
  const std::string reply = module_.Record(kRecord);
  EXPECT_TRUE(Contains(reply, ReturnCode(ZQRMT_RETURN_RECORD_PASSED))) << reply;
  EXPECT_NEAR(Amplitude(reply), 0.915, 0.015) << "the full level's";
  EXPECT_EQ(State(), before);
}

TEST_F(SoundServer, HearsFullLevelWhateverIsRememberedOfEarlierStreams) {
  std::thread muting([] {
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    EXPECT_EQ(std::system("for i in $(pactl list short sink-inputs | cut -f1); do"
                          "  pactl set-sink-input-volume $i 20% && pactl set-sink-input-mute $i 1; done"),
              0);
  });
  EXPECT_GT(Amplitude(module_.Record(kRecord)), 0.9) << "before it is muted";
  muting.join();
  EXPECT_NEAR(Amplitude(module_.Record(kRecord)), 0.915, 0.015);
}

// PipeWire answers before the sink and its monitor are there.
int LoadSink(const std::string& name, const std::string& more = "") {
  return std::system(("pactl load-module module-null-sink sink_name=" + name + more + " && timeout 10 sh -c 'until" +
                      " pactl get-source-volume " + name + ".monitor; do sleep 0.02; done'")
                         .c_str());
}

TEST_F(SoundServer, ListsAnEndpointBeforeOneWhoseIdIsAPieceOfItsOwn) {
  ASSERT_EQ(LoadSink("speaker.2"), 0);
  const std::string state = State();
  EXPECT_LT(state.find(R"("id":"speaker.2")"), state.find(R"("id":"speaker")"));
  EXPECT_LT(state.find(R"("id":"speaker.2.monitor")"), state.size());
}

TEST_F(SoundServer, TellsThePlaceOfEachChannel) {
  // Every second place, so that one that is taken for its neighbour shows, and the last.
  ASSERT_EQ(LoadSink("ten",
                     " channels=10 channel_map=front-left,front-center,rear-left,front-left-of-center,rear-center,"
                     "side-right,top-front-left,top-front-right,top-rear-center,top-rear-right"),
            0);
  ComPtr<IMMDevice> device;
  ComPtr<IPropertyStore> store;
  PROPVARIANT value;
  ASSERT_EQ(Enumerator()->GetDevice(Wide(u"ten"), device.Receive()), S_OK);
  ASSERT_EQ(device->OpenPropertyStore(STGM_READ, store.Receive()), S_OK);
  ASSERT_EQ(store->GetValue(PKEY_AudioEngine_DeviceFormat, &value), S_OK);
  EXPECT_EQ(reinterpret_cast<const WAVEFORMATEXTENSIBLE*>(value.blob.pBlobData)->dwChannelMask, 0x35555U);
  EXPECT_EQ(PropVariantClear(&value), S_OK);
}

// What this process holds: threads, open files, shared memory.
std::array<std::ptrdiff_t, 3> Held() {
  const auto entries = [](const char* folder) {
    return std::distance(std::filesystem::directory_iterator(folder), std::filesystem::directory_iterator());
  };
  std::ifstream maps("/proc/self/maps");
  std::ptrdiff_t shared = 0;
  for (std::string line; std::getline(maps, line);) shared += Contains(line, "/memfd:") || Contains(line, "/dev/shm/");
  return {entries("/proc/self/task"), entries("/proc/self/fd"), shared};
}

TEST_F(SoundServer, LeavesNothingBehind) {
  EXPECT_TRUE(Contains(module_.Record(kRecord), "passed"));
  const auto afterFirst = Held();
  for (const char* contract : {kRecord, kPlay}) {
    EXPECT_TRUE(Contains(contract == kPlay ? module_.Play(contract) : module_.Record(contract), "passed"));
    EXPECT_EQ(Held(), afterFirst);
  }
  {
    // A request that is kept, of the hundreds here, would hold a hundred bytes and more.
    const auto volume = Activated<IAudioEndpointVolume>(eRender);
    BOOL muted = FALSE;
    EXPECT_EQ(volume->GetMute(&muted), S_OK);
    const std::size_t bytes = BytesInUse();
    for (int request = 0; request < 500; ++request) EXPECT_EQ(volume->GetMute(&muted), S_OK);
    EXPECT_LT(BytesInUse(), bytes + 5000);
    // Up to 4 MiB are taken, to the frame.
    const WAVEFORMATEX stereo = Format(WAVE_FORMAT_PCM, 2, 48000, 16).Format;
    for (const auto& [duration, status] : {std::pair(218453333, S_OK), {218453334, AUDCLNT_E_BUFFER_SIZE_ERROR}}) {
      const auto client = Activated<IAudioClient>(eRender);
      EXPECT_EQ(client->Initialize(AUDCLNT_SHAREMODE_SHARED, 0, duration, 0, &stereo, nullptr), status);
    }
    EXPECT_EQ(std::system("grep -qx audioplatform /proc/$PPID/task/*/comm"), 0) << "debuggers show whose thread it is";
  }
  EXPECT_EQ(std::system("test -z \"$(pactl list short sink-inputs)\""), 0) << "a stream is left on the server";
  AudioPlatformUninitialize();
  const auto without = Held();
  EXPECT_EQ(without[0], 1);
  EXPECT_EQ(without[2], 0);
  for (int time = 0; time < 3; ++time) {
    ASSERT_EQ(AudioPlatformInitialize("pulse"), 0);
    EXPECT_GT(Held(), without);
    AudioPlatformUninitialize();
    EXPECT_EQ(Held(), without);
  }
}

struct Loss {
  const char* name;
  const char* command;  // run in the middle of a test
  HRESULT status;       // of the endpoint's operations after that
};

void PrintTo(const Loss& loss, std::ostream* stream) { *stream << loss.name; }

class SoundServerLoss : public SoundServer, public testing::WithParamInterface<Loss> {};

TEST_P(SoundServerLoss, EndsTheTestSoon) {
  using Clock = std::chrono::steady_clock;
  const auto volume = Activated<IAudioEndpointVolume>(eRender);
  const auto speaker = DefaultDevice(eRender);
  Clock::time_point lost;
  std::thread loss([&lost] {
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    lost = Clock::now();
    EXPECT_EQ(std::system(GetParam().command), 0);
  });
  const std::string reply = module_.Record(kRecord);
  const Clock::time_point ended = Clock::now();
  loss.join();
  EXPECT_TRUE(Contains(reply, ReturnCode(ZQRMT_RETURN_PLATFORM))) << reply;
  EXPECT_GT(ended, lost);
  EXPECT_LT(ended - lost, std::chrono::seconds(5));

  BOOL muted = FALSE;
  EXPECT_EQ(volume->GetMute(&muted), GetParam().status);
  EXPECT_LT(Clock::now() - ended, std::chrono::seconds(3));
  ComPtr<IMMDeviceCollection> endpoints;
  const HRESULT ofServer = GetParam().status == AUDCLNT_E_SERVICE_NOT_RUNNING ? GetParam().status : S_OK;
  EXPECT_EQ(Enumerator()->EnumAudioEndpoints(eAll, DEVICE_STATE_ACTIVE, endpoints.Receive()), ofServer);
  DWORD state = 0;
  if (GetParam().status == AUDCLNT_E_DEVICE_INVALIDATED) {
    EXPECT_EQ(speaker->GetState(&state), S_OK);
    EXPECT_EQ(state, DWORD{DEVICE_STATE_NOTPRESENT});
  }
  if (GetParam().status == AUDCLNT_E_DEVICE_INVALIDATED && IsPulseAudio()) {
    ComPtr<IMMDevice> device;
    EXPECT_EQ(Enumerator()->GetDefaultAudioEndpoint(eCapture, eMultimedia, device.Receive()), E_NOTFOUND);
    EXPECT_TRUE(Contains(module_.Play(kPlay), ReturnCode(ZQRMT_RETURN_PLATFORM))) << "there is no endpoint left";
  }
}

constexpr Loss kLosses[] = {
    {"Killed", "kill -KILL $ZQRMT_SOUND_SERVER_PID", AUDCLNT_E_SERVICE_NOT_RUNNING},
    {"Hung", "kill -STOP $ZQRMT_SOUND_SERVER_PID", AUDCLNT_E_SERVICE_NOT_RUNNING},
    {"Unloaded", "pactl unload-module module-null-sink", AUDCLNT_E_DEVICE_INVALIDATED},
    {"Suspended", "pactl suspend-sink speaker 1", S_OK},
};
INSTANTIATE_TEST_SUITE_P(Of, SoundServerLoss, testing::ValuesIn(kLosses),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(SoundServerAtStart, ThatIsNotThereIsAnErrorThatNamesIt) {
  EXPECT_EQ(AudioPlatformInitialize("pulse:"), E_INVALIDARG);
  EXPECT_EQ(AudioPlatformInitialize("pulse:unix:/no/such/socket"), AUDCLNT_E_SERVICE_NOT_RUNNING);
  EXPECT_TRUE(Contains(AudioPlatformError(), "\"unix:/no/such/socket\"")) << AudioPlatformError();
  ASSERT_EQ(kill(ServerProcess(), SIGSTOP), 0);
  EXPECT_EQ(AudioPlatformInitialize("pulse"), AUDCLNT_E_SERVICE_NOT_RUNNING);
  EXPECT_TRUE(Contains(AudioPlatformError(), std::getenv("PULSE_SERVER"))) << AudioPlatformError();
  ASSERT_EQ(kill(ServerProcess(), SIGCONT), 0);
  EXPECT_EQ(AudioPlatformInitialize("pulse"), 0);
  EXPECT_STREQ(AudioPlatformError(), "");
  AudioPlatformUninitialize();
}

}  // namespace
