// The record test on various machines: what it measures, or how it ends if the machine lacks something.

#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/support/machines.h"
#include "tests/support/module_under_test.h"

namespace {

constexpr const char* kPassed = "Audio Record Test passed.";
constexpr const char* kApiError = "Microsoft API Error";

struct Machine {
  const char* name;
  const char* find;     // replaced in the description of the quiet machine
  const char* replace;  // by this
  const char* contract;
  const char* message;
  double amplitude;  // 0.125, as it was sent, if nothing is measured
};

constexpr const char* kMicFormat = R"({"tag": "pcm", "channels": 2, "rate": 44100, "bits": 16})";
constexpr const char* kMicDefault = R"("flow": "capture", "default": ["console", "multimedia"])";
constexpr const char* kSpeakerDefault = R"("flow": "render", "default": ["console", "multimedia"])";
// Half of the tone's largest sample, -29987 of 32768.
constexpr double kHalf = 0.4576;

const Machine kMachines[] = {
    {"speech_quality", kMicFormat, R"({"tag": "pcm", "channels": 1, "rate": 8000, "bits": 16})", kRecordContract,
     kPassed, kHalf},
    {"thirty_two_bits", kMicFormat,
     R"({"tag": "extensible", "channels": 1, "rate": 48000, "bits": 32, "validBits": 32, "channelMask": 4})",
     kRecordContract, kPassed, kHalf},
    {"float_is_no_integer_format", kMicFormat, R"({"tag": "float", "channels": 1, "rate": 48000, "bits": 32})",
     kRecordContract, kApiError, 0.125},
    {"another_format_is_offered", R"("hears":)",
     R"("closest": {"tag": "pcm", "channels": 1, "rate": 22050, "bits": 16}, "hears":)", kRecordContract, kPassed,
     kHalf},
    {"no_format_will_do", R"("hears":)", R"("closest": "none", "hears":)", kRecordContract, kApiError, 0.125},
    {"more_than_the_sink_holds", kMicFormat,
     R"({"tag": "extensible", "channels": 8, "rate": 192000, "bits": 32, "validBits": 32, "channelMask": 255})",
     kRecordContract, "Unable to write to buffer.", 0.125},
    {"louder_than_full_scale", R"("gain": 0.5)", R"("gain": 4)", kRecordContract, kPassed, 1.0},
    {"noise_alone", R"("hears":)", R"("noise": 0.25, "hears":)", kListenContract, kPassed, 0.25},
    {"heard_late", R"("gain": 0.5)", R"("gain": 0.5, "delayMs": 200)", kRecordContract, kPassed, kHalf},
    {"microphone_unplugged", kMicDefault, R"("flow": "capture", "state": "unplugged")", kRecordContract,
     "Could not find device", 0.125},
    {"no_default_capture_for_multimedia", kMicDefault, R"("flow": "capture", "default": ["console"])", kRecordContract,
     kApiError, 0.125},
    {"no_default_render_though_none_is_needed", kSpeakerDefault, R"("flow": "render", "default": ["multimedia"])",
     kListenContract, kApiError, 0.125},
    {"no_volume_channels", R"("levels": [0.5, 0.125])", R"("levels": [])", kRecordContract, kPassed, kHalf},
};

class MachineVariety : public testing::TestWithParam<Machine> {};

TEST_P(MachineVariety, IsMeasuredOrTellsWhyNot) {
  const Machine& machine = GetParam();
  std::string description = QuietMachine();
  const std::size_t at = description.find(machine.find);
  ASSERT_NE(at, std::string::npos);
  description.replace(at, std::string(machine.find).size(), machine.replace);
  // This key isn't part of a description. Its list is what remains of the one that was replaced.
  if (const std::size_t unheard = description.find(R"(, "unheard": [{)"); unheard != std::string::npos) {
    description.erase(unheard, description.find("}]", unheard) + 2 - unheard);
  }
  ModuleUnderTest module;
  module.StartMachine(description);
  const auto before = ModuleUnderTest::State().volumes;
  const std::string reply = module.Record(machine.contract);
  EXPECT_NE(reply.find(machine.message), std::string::npos) << reply;
  constexpr std::string_view kKey = R"("maxAmplitude":)";
  EXPECT_NEAR(std::atof(reply.c_str() + reply.find(kKey) + kKey.size()), machine.amplitude, 0.002) << reply;
  const MachineState after = ModuleUnderTest::State();
  EXPECT_EQ(after.liveObjects, 0);
  // The microphone's stream is set up after the speaker's settings, so a failure leaves those as the test had set them.
  const bool captureFailed = after.trace.back().name == "IAudioClient::IsFormatSupported" ||
                             after.trace.back().name == "IMMDeviceEnumerator::GetDefaultAudioEndpoint";
  if (!captureFailed) {
    EXPECT_EQ(after.volumes, before);
  }
  EXPECT_EQ(after.volumes.at(kMic), before.at(kMic)) << "the microphone is changed only while it captures";
}

INSTANTIATE_TEST_SUITE_P(Machines, MachineVariety, testing::ValuesIn(kMachines),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace
