// The two functions: what they reply to a contract.

#include <gtest/gtest.h>

#include "platform/audio_platform.h"
#include "tests/support/machines.h"
#include "tests/support/module_under_test.h"

namespace {

struct Exchange {
  const char* name;
  const char* function;
  std::string contract;
  std::string reply;
};

// A reply, with `nested` behind the eight plain members of its core record.
std::string Reply(int code, const std::string& message, const std::string& nested = "") {
  return R"({"CoreData":{"TimeStamp":"","TaskName":"","TaskID":"","TaskVersion":"",)" + ReturnCode(code) +
         R"(,"ReturnMessage":")" + message + R"(","Result":"","Status":"")" + nested + "}}";
}

std::string Device(const std::string& id, const std::string& nested = "") {
  return R"(,"DeviceInfo":{"DeviceID":"","DeviceInstanceID":")" + id + R"(","Name":"","DUID":"","Type":"")" + nested +
         "}";
}

std::string Audio(const std::string& command, const std::string& amplitude, const std::string& target) {
  return R"(,"AudioData":{"CommandExecuted":)" + command + R"(,"maxAmplitude":)" + amplitude + R"(,"targetDevice":")" +
         target + R"("})";
}

std::string Core(const std::string& members) { return R"({"CoreData":{)" + members + "}}"; }

const std::string kBadInput = Reply(ZQRMT_RETURN_BAD_INPUT, "Bad JSON input.");
const std::string kNoAudio = Audio("-1", "0.0", "");

const Exchange kExchanges[] = {
    {"record_empty", "AudioRecordTest", "", kBadInput},
    {"record_second_value", "AudioRecordTest", R"({"CoreData":{}} {})", kBadInput},
    {"record_other_case", "AudioRecordTest", R"({"coreData":{}})", kBadInput},
    {"record_null_core", "AudioRecordTest", R"({"CoreData":null})", kBadInput},
    {"record_infinite_number", "AudioRecordTest", Core(R"("a":17976931348623159e300)"), kBadInput},
    {"record_lone_first_half", "AudioRecordTest", Core(R"("TaskID":"\ud83d.")"), kBadInput},
    {"record_lone_second_half", "AudioRecordTest", Core(R"("TaskID":"\\\udc00")"), kBadInput},
    {"play_pair_and_controls", "AudioPlaybackTest", Core("\"TaskID\":\"\\ud83d\\ude00\\u0001\\t\\u00e4\""),
     [] {
       std::string reply = kBadInput;
       return reply.replace(reply.find(R"("TaskID":"")"), 11, "\"TaskID\":\"😀\\u0001\\tä\"");
     }()},
    {"record_no_device", "AudioRecordTest", Core(""), kBadInput},
    {"record_device_not_an_object", "AudioRecordTest", Core(R"("DeviceInfo":7)"), kBadInput},
    {"play_no_endpoint", "AudioPlaybackTest", Core(R"("DeviceInfo":{})"),
     Reply(ZQRMT_RETURN_BAD_INPUT, "Bad JSON input.", Device(""))},
    {"record_null_audio_data", "AudioRecordTest", Core(R"("DeviceInfo":{"DeviceInstanceID":"X","AudioData":null})"),
     Reply(0, "", Device("X"))},
    {"record_no_endpoint", "AudioRecordTest", Core(R"("DeviceInfo":{"AudioData":{}})"),
     Reply(0, "", Device("", kNoAudio))},
    {"record_unknown_endpoint", "AudioRecordTest",
     Core(R"("DeviceInfo":{"DeviceInstanceID":"X","AudioData":{"targetDevice":"Y"}})"),
     Reply(ZQRMT_RETURN_NO_ENDPOINT, "Could not find device", Device("X", Audio("-1", "0.0", "Y")))},
    {"record_unknown_render_endpoint", "AudioRecordTest",
     Core(R"("DeviceInfo":{"DeviceInstanceID":"{0.0.1.00000000}.{mic}","AudioData":{"targetDevice":"Y"}})"),
     Reply(ZQRMT_RETURN_NO_ENDPOINT, "Could not find device", Device(kMic, Audio("-1", "0.0", "Y")))},
    {"play_unknown_endpoint_keeps_audio_data", "AudioPlaybackTest",
     Core(R"("DeviceInfo":{"DeviceInstanceID":"X","AudioData":{"maxAmplitude":1,"CommandExecuted":7}})"),
     Reply(ZQRMT_RETURN_NO_ENDPOINT, "Could not find device", Device("X", Audio("7", "0.0", "")))},
    {"play_passes_over_the_code_sent", "AudioPlaybackTest",
     Core(R"("ReturnCode":5,"DeviceInfo":{"DeviceInstanceID":"SWD\\MMDEVAPI\\{0.0.0.00000000}.{SPEAKER}"})"),
     Reply(ZQRMT_RETURN_PLAYBACK_PASSED, "Audio Playback Test passed.",
           Device(R"(SWD\\MMDEVAPI\\{0.0.0.00000000}.{SPEAKER})"))},
    {"record_keeps_the_code_sent", "AudioRecordTest",
     Core(R"("ReturnCode":5,"DeviceInfo":{"DeviceInstanceID":"{0.0.1.00000000}.{mic}","AudioData":{}})"),
     Reply(5, "", Device(kMic, kNoAudio))},
    {"known_keys_in_wire_order", "AudioPlaybackTest",
     Core(R"("Status":"s","Unknown":[1],"Result":"r","TaskVersion":"v","TaskID":1,"TaskName":"n","TaskName":"m",)"
          R"("TimeStamp":"a\u0000b","ReturnCode":4.0)"),
     R"({"CoreData":{"TimeStamp":"a","TaskName":"n","TaskID":"","TaskVersion":"v",)" +
         ReturnCode(ZQRMT_RETURN_BAD_INPUT) + R"(,"ReturnMessage":"Bad JSON input.","Result":"r","Status":"s"}})"},
};

class ContractTest : public testing::TestWithParam<Exchange> {};

TEST_P(ContractTest, GivesTheReplyAndLeavesTheEndpoints) {
  ModuleUnderTest module;
  module.StartMachine(QuietMachine());
  const std::map<std::string, Volume> before = ModuleUnderTest::State().volumes;
  EXPECT_EQ(module.Call(GetParam().function, GetParam().contract), GetParam().reply);
  EXPECT_EQ(ModuleUnderTest::State().volumes, before);
  EXPECT_EQ(ModuleUnderTest::State().liveObjects, 0);
}

INSTANTIATE_TEST_SUITE_P(Exchanges, ContractTest, testing::ValuesIn(kExchanges),
                         [](const auto& test) { return std::string(test.param.name); });

class ModuleTest : public testing::Test {
 protected:
  ModuleTest() { module.StartMachine(QuietMachine()); }
  ModuleUnderTest module;
};

TEST_F(ModuleTest, NullTextIsAnEmptyText) {
  EXPECT_EQ(module.CallWide("AudioRecordTest", nullptr), kBadInput);
  EXPECT_EQ(module.CallWide("AudioPlaybackTest", nullptr), kBadInput);
}

TEST_F(ModuleTest, WithoutAPlatformOnTheThreadTheTestFails) {
  AudioPlatformUninitialize();
  EXPECT_NE(module.Record(kRecordContract).find(ReturnCode(ZQRMT_RETURN_PLATFORM)), std::string::npos);
  EXPECT_NE(module.Play(kPlayContract).find(ReturnCode(ZQRMT_RETURN_PLATFORM)), std::string::npos);
}

TEST_F(ModuleTest, SurvivesAMillionBracketsAndALongText) {
  std::string brackets(1000000, '[');
  EXPECT_EQ(module.Record(brackets), kBadInput);
  EXPECT_EQ(module.Record(brackets + std::string(1000000, ']')), kBadInput);
  std::string objects;
  for (int i = 0; i < 1000000; ++i) objects += R"({"":)";
  EXPECT_EQ(module.Play(Core(R"("a":)" + objects + "0" + std::string(1000000, '}'))), kBadInput);
  EXPECT_EQ(module.Play(Core(R"("a":")" + std::string(ZQRMT_LONG_TEXT, 'x') + '"')), kBadInput);
}

}  // namespace
