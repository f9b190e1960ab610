#include "audiotests/outcome_table.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "tests/support/process.h"
#include "tests/support/temp_directory.h"

namespace {

using ZQ_RMT_TESTS_AUDIO::ReportOutcome;

// No sequence reaches the outcomes that aren't in the table, so they are reported here by hand.
TEST(OutcomeTest, ACodeOutsideTheTableIsNotHandledOrWhatWasLoggedLast) {
  TempDirectory log;
  SetEnvironment("ZQRMT_LOG_DIRECTORY", log.Path().string());
  logging::Logger logger("Source", 44000000);
  ZQ_RMT_MODELS::CoreData core;
  core.ReturnMessage = u"old";

  ReportOutcome(995571, &logger, &core);
  EXPECT_EQ(core.ReturnCode, 0) << "the logger has accepted nothing yet";
  EXPECT_EQ(core.ReturnMessage, u"");

  logger.LogProgress(50.0, 100.0, 100.0, 0.0);
  ReportOutcome(995583, &logger, &core);
  EXPECT_EQ(core.ReturnCode, 244000002);
  EXPECT_EQ(core.ReturnMessage, u"Progress completed");

  std::ofstream(log / "debug3.flg");
  ReportOutcome(995571, &logger, &core);
  EXPECT_EQ(core.ReturnCode, 544000001);
  EXPECT_EQ(core.ReturnMessage, u"Not handled");
  EXPECT_EQ(ZQ_RMT_TESTS_AUDIO::OutcomeTable.size(), 7U);
}

TEST(OutcomeTest, MemoryAndSinkFailuresHaveTheirTexts) {
  TempDirectory log;
  SetEnvironment("ZQRMT_LOG_DIRECTORY", log.Path().string());
  logging::Logger logger("Source", 44000000);
  ZQ_RMT_MODELS::CoreData core;
  ReportOutcome(990414, &logger, &core);
  EXPECT_EQ(core.ReturnCode, 744990414);
  EXPECT_EQ(core.ReturnMessage, u"memory could not be allocated to Buffer");
  ReportOutcome(995727, &logger, &core);
  EXPECT_EQ(core.ReturnCode, 744995727);
  EXPECT_EQ(core.ReturnMessage, u"Unable to write to buffer.");
}

}  // namespace
