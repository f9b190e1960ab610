#include "logging/logger.h"

#include "logging/model_logger.h"
#include "tests/logging/logger_fixture.h"

namespace logging {

const struct {
  std::int32_t level;
  const char* word;
  const LogRecord* (Logger::*log)(std::int32_t, MessageText, double);
  std::int32_t component, id;
  const char* code;
} kOperations[] = {{0, "debug3", &Logger::LogDebug3, 27000000, 1, "527000001"},
                   {1, "debug2", &Logger::LogDebug2, 27000000, 7600, "527007600"},
                   {2, "debug1", &Logger::LogDebug1, 27000000, 27000000, "527000000"},
                   {5, "test1", &Logger::LogTest1, 27000000, 26999999, "353999999"},
                   {6, "normal", &Logger::LogNormal, 44000000, -1, "243999999"},
                   {7, "notification", &Logger::LogNotification, -1, -5, "399999995"},
                   {8, "warning", &Logger::LogWarning, 27000000, 27000001, "727000001"},
                   {9, "error", &Logger::LogError, 44000000, 995728, "844995728"},
                   {10, "critical", &Logger::LogCritical, 44000000, 99999999, "999999999"},
                   {11, "console", &Logger::LogConsole, 44000000, 100000000, "100000000"}};

TEST_F(LoggerTest, ComposesCodes) {
  for (const auto& row : kOperations) {
    Logger logger("source", "nolog", row.component);
    logger.SetLevel(0);
    const LogRecord* record = (logger.*row.log)(row.id, "", 0.0);
    EXPECT_EQ(record->code, row.code);
    EXPECT_STREQ(LevelName(record->level), row.word);
  }
  EXPECT_STREQ(LevelName(12), "normal");
  EXPECT_STREQ(LevelName(-1), "normal");
}

TEST_F(LoggerTest, MostTalkativeFlagOrOverrideDecidesWhatIsMadeAndWritten) {
  const std::tuple<std::vector<const char*>, std::vector<std::int32_t>, std::int32_t> kRows[] = {
      {{"console.flg", "normal"}, {}, 6},
      {{"warning.flg", "test1.flg"}, {}, 5},
      {{"critical.flg"}, {}, 10},
      {{"test2.flg"}, {}, 4},
      {{"test3.flg", "debug1.flg"}, {3, 12}, 3},
      {{"debug1.flg"}, {8, -2}, 8},
      {{"debug2.flg"}, {11}, 11},
      {{"debug3.flg"}, {11, -1}, 0}};
  std::size_t accepted = 0;
  for (const auto& [flags, setLevels, active] : kRows) {
    for (const char* flag : flags) Write(directory + "/" + flag);
    Logger logger("source", 0);
    for (const std::int32_t level : setLevels) logger.SetLevel(level);
    for (const auto& operation : kOperations) {
      int made = 0;
      const auto make = [&made] { return std::to_string(++made); };
      (logger.*operation.log)(1, make, 0.0);
      EXPECT_EQ(made, operation.level >= active ? 1 : 0) << operation.word << " at " << active;
      accepted += operation.level >= active ? 1 : 0;
      EXPECT_EQ(Lines(live).size(), accepted) << operation.word << " at " << active;
    }
    for (const char* flag : flags) std::filesystem::remove(directory + "/" + flag);
  }
}

TEST_F(LoggerTest, FlagFileWorksAtOnceAndARejectedMessageLeavesTheRecord) {
  Logger logger("source", 44000000);
  const auto raiseLevel = [] {
    Write(directory + "/error.flg");
    return std::string("accepted, then dropped");
  };
  const LogRecord* record = logger.LogNormal(1, raiseLevel, 12.5);
  EXPECT_EQ(logger.LogNormal(2, "rejected", 99.0), record);
  EXPECT_EQ(record->text, "accepted, then dropped");
  EXPECT_EQ(record->code, "244000001");
  EXPECT_FALSE(std::filesystem::exists(live));
  std::filesystem::remove(directory + "/error.flg");
  EXPECT_EQ(logger.LogNormal(3, std::string("written"), 0.0)->text, "written");
}

TEST_F(LoggerTest, ProgressIsABandOfTheScaleUpToItsEnd) {
  const std::tuple<double, double, double, double, std::string> kRows[] = {
      {0, 100, 100, 0, ""},   {15, 100, 100, 0, "15% "}, {1, 2, 50, 25, "50% "},
      {3, 2, 50, 25, "75% "}, {1, 0, 50, 25, "75% "},    {0, 100, 10, 90, "90% "}};
  Logger logger("source", 44000000);
  for (const auto& [completed, total, span, start, shown] : kRows) {
    logger.LogProgress(completed, total, span, start);
    EXPECT_EQ(Lines(live).back().substr(24), ", 244000002, normal: " + shown + "Progress completed, [source]");
  }
}

TEST_F(LoggerTest, NoLogTouchesNoFileAndConsoleTextIsPrinted) {
  Logger logger("source", "nolog", 0);
  testing::internal::CaptureStdout();
  logger.LogConsole(3, "50 %s", 0.0);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "50 %s");
  EXPECT_FALSE(std::filesystem::exists("nolog"));
}

TEST_F(LoggerTest, ADirectoryInTheLogsPlaceHasNoSize) {
  std::filesystem::create_directory(live);
  ExpectRaised("file_size", [] { Logger("source", 0).LogNormal(1, "", 0.0); });
}

TEST_F(LoggerTest, ModelLoggerCreatesTheDirectoryAndTriesAgain) {
  Logger early("source", 0);
  std::filesystem::remove(directory);
  early.LogNormal(1, "lost without a word", 0.0);
  EXPECT_FALSE(std::filesystem::exists(directory));
  Write(directory);
  early.LogNormal(1, "lost behind a file", 0.0);
  ExpectRaised("create_directory", [] { GetModelLogger(); });
  std::filesystem::remove(directory);
  EXPECT_EQ(&GetModelLogger(), &GetModelLogger());
  EXPECT_EQ(GetModelLogger().LogWarning(1, "", 0.0)->code, "727000001");
  EXPECT_EQ(Lines(live).size(), 1U);
}

}  // namespace logging
