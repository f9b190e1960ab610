// Lets every platform call of every sequence fail once.

#include <gtest/gtest.h>

#include <map>

#include "platform/core_audio.h"
#include "tests/support/machines.h"
#include "tests/support/module_under_test.h"

namespace {

struct Sweep {
  const char* name;
  const char* function;
  const char* contract;
  HRESULT status;
};

const Sweep kSweeps[] = {
    {"playback_failure", "AudioPlaybackTest", kPlayContract, AUDCLNT_E_DEVICE_INVALIDATED},
    {"playback_success_other_than_ok", "AudioPlaybackTest", kPlayContract, S_FALSE},
    {"record_failure", "AudioRecordTest", kRecordContract, AUDCLNT_E_DEVICE_INVALIDATED},
    {"record_success_other_than_ok", "AudioRecordTest", kRecordContract, S_FALSE},
    {"listening_failure", "AudioRecordTest", kListenContract, AUDCLNT_E_DEVICE_INVALIDATED},
    {"listening_buffer_empty", "AudioRecordTest", kListenContract, AUDCLNT_S_BUFFER_EMPTY},
};

// The value has been copied when it is cleared, so the result doesn't matter to the test.
bool FailureIsHarmless(const Operation& operation) { return operation.name == "PropVariantClear"; }

// Another success status of GetValue isn't taken for a failure. The value is empty, so the next step fails.
bool FailsLater(const Operation& operation, HRESULT status) {
  return operation.name == "IPropertyStore::GetValue" && SUCCEEDED(status);
}

void Apply(const Operation& operation, std::map<std::string, Volume>& volumes) {
  if (operation.name == "IAudioEndpointVolume::SetMute") volumes[operation.endpoint].muted = operation.muted;
  if (operation.name == "IAudioEndpointVolume::SetChannelVolumeLevelScalar") {
    volumes[operation.endpoint].levels.at(static_cast<std::size_t>(operation.channel)) = operation.level;
  }
}

class FaultSweep : public testing::TestWithParam<Sweep> {};

TEST_P(FaultSweep, EachFailingCallEndsTheTestAndLeavesWhatWasSet) {
  const Sweep& sweep = GetParam();
  ModuleUnderTest module;
  module.StartMachine(QuietMachine());
  std::map<std::string, Volume> volumes = ModuleUnderTest::State().volumes;
  const std::string passed = module.Call(sweep.function, sweep.contract);
  const MachineState clean = ModuleUnderTest::State();
  ASSERT_NE(passed.find("passed."), std::string::npos) << passed;
  ASSERT_EQ(clean.volumes, volumes) << "a test that passes puts everything back";

  std::map<std::string, int> calls;
  // Of the rounds of a loop, the first ten, every tenth and so the last: what lies between is the same.
  for (std::size_t i = 0; i < clean.trace.size(); ++i) {
    const Operation& operation = clean.trace[i];
    const int call = ++calls[operation.name];
    if (operation.name == "Sleep" || (call > 10 && call % 10 != 0)) continue;  // Sleep has no status
    SCOPED_TRACE(operation.name + ", call " + std::to_string(call));
    module.StartMachine(QuietMachine(R"({"operation": ")" + operation.name + R"(", "call": )" + std::to_string(call) +
                                     R"(, "status": )" + std::to_string(sweep.status) + "}"));
    const std::string reply = module.Call(sweep.function, sweep.contract);
    const MachineState state = ModuleUnderTest::State();
    EXPECT_EQ(state.liveObjects, 0);
    ASSERT_GT(state.trace.size(), i);
    EXPECT_EQ(state.trace[i].status, sweep.status);
    if (FailureIsHarmless(operation)) {
      EXPECT_EQ(reply.find("Microsoft API Error"), std::string::npos) << reply;
      continue;
    }
    EXPECT_NE(reply.find(ReturnCode(ZQRMT_RETURN_PLATFORM) + R"(,"ReturnMessage":"Microsoft API Error")"), reply.npos)
        << reply;
    EXPECT_TRUE(reply.find("AudioData") == reply.npos || reply.find(R"("maxAmplitude":0.125)") != reply.npos) << reply;
    EXPECT_EQ(state.volumes, volumes) << "what had been set by then stays, and nothing else changes";
    EXPECT_TRUE(state.trace.size() == i + 1 || FailsLater(operation, sweep.status))
        << "nothing is called after a failure";
    Apply(operation, volumes);
    if (testing::Test::HasFailure()) return;
  }
}

TEST(EmptyHanded, WhatAnOperationDoesNotHandOutIsNotUsed) {
  ModuleUnderTest module;
  for (const std::string operation :
       {"CoCreateInstance", "IMMDeviceEnumerator::EnumAudioEndpoints", "IMMDeviceEnumerator::GetDefaultAudioEndpoint",
        "IMMDeviceCollection::Item", "IMMDevice::Activate", "IMMDevice::GetId", "IMMDevice::OpenPropertyStore",
        "IPropertyStore::GetValue", "IAudioClient::GetService", "IAudioRenderClient::GetBuffer"}) {
    module.StartMachine(QuietMachine(R"({"operation": ")" + operation + R"(", "status": 0, "sticky": true})"));
    const std::string reply = module.Call("AudioRecordTest", kRecordContract);
    EXPECT_NE(reply.find("Microsoft API Error"), std::string::npos) << operation << ' ' << reply;
  }
}

INSTANTIATE_TEST_SUITE_P(Sequences, FaultSweep, testing::ValuesIn(kSweeps),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace
