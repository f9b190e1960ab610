#include "logging/log_file.h"

#include <set>

#include "logging/local_time.h"
#include "tests/logging/logger_fixture.h"

namespace logging {

TEST_F(LoggerTest, LineHoldsTheFieldsThatTheRecordHas) {
  const std::tuple<double, std::string, std::string, std::string> kRows[] = {
      {0.0, "Set A:1, b", "", "Set A:1, b, [s]\n"},
      {99.9, "done", "", "99% done, [s]\n"},
      {-5.0, "", "", ", [s]\n"},
      {1e20, "x\ny", "T", "100000000000000000000% x\ny, DataType included: T, [s]\n"}};
  for (const auto& [percent, text, dataType, end] : kRows) {
    const LogRecord record{"now", "744000001", 8, text, "s", dataType, percent};
    EXPECT_EQ(LogLine(record), "now, 744000001, warning: " + end);
  }
}

TEST_F(LoggerTest, TimeIsLocalInTheFormOfCtime) {
  SetTimeZone("XST-2");
  EXPECT_EQ(LocalTimeText(1795012214), "Wed Nov 18 16:30:14 2026");
  std::time_t time = std::time(nullptr);
  const std::string logged = Logger("source", 0).LogNormal(1, "", 0.0)->timeStamp;
  while (LocalTimeText(time) != logged && time <= std::time(nullptr)) ++time;
  EXPECT_EQ(LocalTimeText(time), logged);
}

TEST_F(LoggerTest, LogFileNamesFollowTheRules) {
  const std::pair<std::string, std::string> kRows[] = {{"", "/before.LOG"},
                                                       {"nolog", "nolog"},
                                                       {"Nolog", directory + "/Nolog.LOG"},
                                                       {"my.txt", directory + "/my.LOG"},
                                                       {"/x y/abc.log", "/x y/abc.LOG"},
                                                       {"x/abc.jpeg", "x/abc.jpeg.LOG"},
                                                       {"/x/a(1).log", "ZQRMLOG.LOG"},
                                                       {"/x/\xC3\xA4.log", "ZQRMLOG.LOG"},
                                                       {std::string("/x/a\0", 5), "ZQRMLOG.LOG"}};
  for (const auto& [given, path] : kRows) {
    Logger logger("source", Native("/before"), 0);
    logger.SetLogFile(Native(given));
    EXPECT_EQ(logger.Path(), Native(path));
  }
  EXPECT_EQ(NormalizeLogName("abc"), "abc.LOG");
  EXPECT_EQ(NormalizeLogName(".abc"), ".LOG");
}

TEST_F(LoggerTest, RedirectFileNamesTheDirectory) {
  EXPECT_EQ(Logger("source", 0).Path(), live);
  const std::pair<std::string, std::string> kRows[] = {
      {"..", live},
      {"/else where~", "/else where~/ZQRMLOG.LOG"},
      {"/x\n", "/x\n/ZQRMLOG.LOG"},
      {"", "/ZQRMLOG.LOG"},
      {"/" + std::string(65536, 'x'), "/" + std::string(65535, 'x') + "/ZQRMLOG.LOG"}};
  for (const auto& [contents, path] : kRows) {
    Write(directory + "/zqlgrphf.lef", Native(contents));
    EXPECT_EQ(Logger("source", 0).Path(), Native(path));
    EXPECT_EQ(Logger("source", live, 0).Path(), live);
  }
}

class RotationTest : public LoggerTest {
 protected:
  void LogWithLiveSize(std::uintmax_t size, const std::string& text) {
    Write(live, text + "\n");
    std::filesystem::resize_file(live, size);
    logger.LogNormal(1, text, 0.0);
  }

  static std::string Numbered(int number) { return Native(directory + "/ZQRMLOG_" + std::to_string(number) + ".LOG"); }

  static void ExpectFiles(std::set<std::string> expected) {
    expected.insert(live);
    std::set<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(directory)) files.insert(entry.path().string());
    EXPECT_EQ(files, expected);
  }

  Logger logger{"source", 0};
};

TEST_F(RotationTest, KeepsTheNewestFortyNine) {
  for (int pass = 1; pass <= 60; ++pass) LogWithLiveSize(5000001, std::to_string(pass));
  std::set<std::string> expected;
  for (int number = 1; number <= 49; ++number) {
    expected.insert(Numbered(number));
    EXPECT_EQ(Lines(Numbered(number)).front(), std::to_string(61 - number));
  }
  ExpectFiles(expected);
}

TEST_F(RotationTest, ComesAboveFiveMillionBytesAndMovesFilesAcrossGaps) {
  for (const int number : {2, 7, 49, 50, 51}) Write(Numbered(number));
  LogWithLiveSize(5000000, "stays");
  ExpectFiles({Numbered(2), Numbered(7), Numbered(49), Numbered(50), Numbered(51)});
  LogWithLiveSize(5000001, "moves");
  ExpectFiles({Numbered(1), Numbered(3), Numbered(8), Numbered(51)});
  EXPECT_EQ(Lines(live).size(), 1U);
}

}  // namespace logging
