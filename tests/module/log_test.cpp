// What the module writes to the shared log, and how a call ends if the log can't be written.

#include <gtest/gtest.h>

#include <fstream>

#include "tests/module/bad_log.h"
#include "tests/support/machines.h"
#include "tests/support/module_under_test.h"

namespace {

using Lines = std::vector<std::string>;

const std::string kTestSource = ", [ZQ_RMT_TESTS_AUDIO::AudioRecordTestClass]";
// The codes of lines that report no outcome.
constexpr int kVersionCode = ZQRMT_AUDIO_RETURN_CODE(ZQRMT_LEVEL_NORMAL, 0);
constexpr int kProgressCode = ZQRMT_AUDIO_RETURN_CODE(ZQRMT_LEVEL_NORMAL, 2);
const std::string kVersionText = "ZQRMTTestsAudio.dll. Version:2.4.4.0";

std::string Line(int code, const std::string& levelAndText) {
  return std::to_string(code) + ", " + levelAndText + kTestSource;
}

const std::string kVersionLine = Line(kVersionCode, "normal: " + kVersionText);

std::string Progress(const std::string& percent) {
  return Line(kProgressCode, "normal: " + percent + "Progress completed");
}

TEST(LogTest, ALoadWritesItsVersionForEachTestObject) {
  EXPECT_EQ(ModuleUnderTest().LogLines(), Lines({kVersionLine, kVersionLine}));
}

TEST(LogTest, APassingRecordTestShowsItsProgressAndItsPass) {
  ModuleUnderTest module;
  module.StartMachine(QuietMachine());
  module.Record(kRecordContract);
  EXPECT_EQ(module.LogLines(),
            Lines({kVersionLine, kVersionLine, Progress(""), Progress("1% "), Progress("2% "), Progress("15% "),
                   Progress("16% "), Progress("17% "), Progress("90% "), Progress("99% "), Progress("100% "),
                   Line(ZQRMT_RETURN_RECORD_PASSED, "normal: Audio Record Test passed.")}));
}

TEST(LogTest, AFailingTestStillReachesTheEndOfItsProgress) {
  ModuleUnderTest module;
  module.StartMachine(R"({"endpoints": []})");
  module.Record(kRecordContract);
  module.Play(kPlayContract);
  EXPECT_EQ(
      module.LogLines(),
      Lines({kVersionLine, kVersionLine, Progress(""), Line(ZQRMT_RETURN_NO_ENDPOINT, "warning: Could not find device"),
             Progress("100% "), Progress(""), Line(ZQRMT_RETURN_PLATFORM, "warning: Microsoft API Error")}));
}

TEST(LogTest, LinesBeforeTheDirectoryIsThereAreLost) {
  ModuleUnderTest module([](const auto&) {});
  module.StartMachine(QuietMachine());
  EXPECT_NE(module.Play(kPlayContract).find(ReturnCode(ZQRMT_RETURN_PLAYBACK_PASSED)), std::string::npos);
  EXPECT_EQ(module.LogLines(), Lines({Line(ZQRMT_RETURN_PLAYBACK_PASSED, "normal: Audio Playback Test passed.")}));
}

TEST(LogTest, ItStaysWhereItIsWhateverTheRedirectFileSays) {
  ModuleUnderTest module([](const auto& log) {
    std::filesystem::create_directories(log / "elsewhere");
    std::ofstream(log / "zqlgrphf.lef") << (log / "elsewhere").string();
  });
  module.StartMachine(QuietMachine());
  module.Play(kPlayContract);
  EXPECT_EQ(module.LogLines().size(), 4U);
  EXPECT_TRUE(std::filesystem::is_empty(module.LogDirectory() / "elsewhere"));
}

TEST(LogTest, TheMostTalkativeFlagDecidesFromTheNextLineOn) {
  const std::pair<const char*, std::size_t> kFlags[] = {{"error", 0}, {"warning", 1}, {"normal", 2}};
  ModuleUnderTest module;
  module.StartMachine(QuietMachine());
  for (const auto& [flag, added] : kFlags) {
    const std::size_t before = module.LogLines().size();
    module.SetFlag(flag);
    module.Play("");
    EXPECT_EQ(module.LogLines().size() - before, added) << flag;
  }
}

void PrepareLog(const std::filesystem::path& log, std::uintmax_t size) {
  std::filesystem::create_directory(log);
  std::ofstream{log / "ZQRMLOG.LOG"};
  std::filesystem::resize_file(log / "ZQRMLOG.LOG", size);
}

TEST(LogTest, ALiveLogOfFiveMillionBytesTakesOneMoreLine) {
  const ModuleUnderTest module([](const auto& log) { PrepareLog(log, 5000000); });
  EXPECT_EQ(module.LogLines(), Lines({kVersionLine}));
  EXPECT_GT(std::filesystem::file_size(module.LogDirectory() / "ZQRMLOG_1.LOG"), 5000000U);
}

const BadLog kBadLogs[] = {
    {"file_in_its_place", [](const std::filesystem::path& log) { std::ofstream{log}; }, "(null)"},
    {"log_is_a_directory", [](const std::filesystem::path& log) { create_directories(log / "ZQRMLOG.LOG"); }, "(null)"},
};

TEST_P(BadLogTest, TheHostIsAnsweredOrGetsANullPointerAndNoneIsEnded) {
  ModuleUnderTest module(GetParam().prepare);
  module.StartMachine(QuietMachine());
  const std::string reply = module.Play(kPlayContract);
  EXPECT_NE(reply.find(GetParam().reply), std::string::npos) << reply;
  EXPECT_EQ(ModuleUnderTest::State().liveObjects, 0);
}

INSTANTIATE_TEST_SUITE_P(Logs, BadLogTest, testing::ValuesIn(kBadLogs),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace
