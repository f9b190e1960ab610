#include <gtest/gtest.h>

#include <fstream>

#include "audio/outcome_codes.h"
#include "audiotests/outcome_table.h"
#include "audiotests/zqrmt_return_codes.h"
#include "tests/support/process.h"
#include "tests/support/temp_directory.h"

namespace {

using ZQ_RMT_TESTS_AUDIO::LogWithSeverity;
using ZQ_RMT_TESTS_AUDIO::OutcomeTable;
using ZQ_RMT_TESTS_AUDIO::ReportOutcome;

class OutcomeTest : public testing::Test {
 protected:
  // One for the process, which reads the name of its log directory once.
  static const TempDirectory& Log() {
    static const TempDirectory directory;
    return directory;
  }

  static logging::Logger NewLogger() {
    SetEnvironment("ZQRMT_LOG_DIRECTORY", Log().Path().string());
    return logging::Logger("Source", ZQRMT_AUDIO_COMPONENT * 1000000);
  }

  logging::Logger logger = NewLogger();
  ZQ_RMT_MODELS::CoreData core;
};

// What hosts read in the public header against what the logger composes.
TEST_F(OutcomeTest, EachIsReportedWithItsPublishedCode) {
  const std::tuple<std::int32_t, std::int32_t, std::u16string> published[] = {
      {ZQRMT_OUTCOME_NO_ENDPOINT, ZQRMT_RETURN_NO_ENDPOINT, u"Could not find device"},
      {ZQRMT_OUTCOME_NO_MEMORY, ZQRMT_RETURN_NO_MEMORY, u"memory could not be allocated to Buffer"},
      {ZQRMT_OUTCOME_PLATFORM, ZQRMT_RETURN_PLATFORM, u"Microsoft API Error"},
      {ZQRMT_OUTCOME_BAD_INPUT, ZQRMT_RETURN_BAD_INPUT, u"Bad JSON input."},
      {ZQRMT_OUTCOME_TOO_MUCH_SOUND, ZQRMT_RETURN_TOO_MUCH_SOUND, u"Unable to write to buffer."},
      {ZQRMT_OUTCOME_RECORD_PASSED, ZQRMT_RETURN_RECORD_PASSED, u"Audio Record Test passed."},
      {ZQRMT_OUTCOME_PLAYBACK_PASSED, ZQRMT_RETURN_PLAYBACK_PASSED, u"Audio Playback Test passed."}};
  ASSERT_EQ(OutcomeTable.size(), std::size(published));
  for (const auto& [id, code, message] : published) {
    ReportOutcome(id, &logger, &core);
    EXPECT_EQ(core.ReturnCode, code);
    EXPECT_EQ(core.ReturnMessage, message);
  }
}

// No outcome of the table has any but two of them.
TEST_F(OutcomeTest, EachSeverityIsLoggedAtItsLevel) {
  std::ofstream(Log() / "debug3.flg");
  const logging::LogLevel levels[] = {logging::kDebug3,       logging::kConsole,  logging::kNormal, logging::kTest1,
                                      logging::kNotification, logging::kDebug1,   logging::kDebug3, logging::kWarning,
                                      logging::kError,        logging::kCritical, logging::kDebug3};
  for (std::int32_t severity = 0; severity < 11; ++severity) {
    const logging::LogRecord& logged = *LogWithSeverity(logger, severity, 1, "text");
    EXPECT_EQ(logged.level, levels[severity]) << severity;
    EXPECT_EQ(logged.percent, 0.0) << severity;
  }
  std::filesystem::remove(Log() / "debug3.flg");
}

// No sequence reaches an outcome that isn't in the table.
TEST_F(OutcomeTest, AnotherIsNotHandledOrShowsWhatWasLoggedLast) {
  core.ReturnMessage = u"old";
  ReportOutcome(audio::kNoEndpointGiven, &logger, &core);
  EXPECT_EQ(core.ReturnCode, 0) << "the logger has accepted nothing yet";
  EXPECT_EQ(core.ReturnMessage, u"");

  logger.LogProgress(50.0, 100.0, 100.0, 0.0);
  ReportOutcome(audio::kNotSetUp, &logger, &core);
  EXPECT_EQ(core.ReturnCode, ZQRMT_AUDIO_RETURN_CODE(ZQRMT_LEVEL_NORMAL, 2));
  EXPECT_EQ(core.ReturnMessage, u"Progress completed");

  std::ofstream(Log() / "debug3.flg");
  ReportOutcome(audio::kNotSetUp, &logger, &core);
  EXPECT_EQ(core.ReturnCode, ZQRMT_AUDIO_RETURN_CODE(5, 1));
  EXPECT_EQ(core.ReturnMessage, u"Not handled");
}

}  // namespace
