// Failures of the file system that a test can cause on POSIX systems only.

#include <sys/resource.h>

#include <csignal>
#include <limits>

#include "logging/local_time.h"
#include "logging/log_file.h"
#include "tests/logging/logger_fixture.h"

namespace logging {

TEST_F(LoggerTest, FailingProbesAreRaised) {
  Logger logger("source", 0);
  std::filesystem::remove_all(directory);
  std::filesystem::create_symlink(directory, directory);
  ExpectRaised("exists", [&] { logger.LogDebug3(1, "", 0.0); });
  ExpectRaised("exists", [&] { logger.LogConsole(1, "printed all the same\n", 0.0); });
  ExpectRaised("exists", [&] { Logger("source", 0); });
  logger.SetLevel(kNormal);
  ExpectRaised("exists", [&] { logger.LogNormal(1, "", 0.0); });
}

TEST_F(LoggerTest, ABackslashIsNoSeparator) { EXPECT_EQ(NormalizeLogName("D:\\x\\a.log"), kDefaultLogName); }

// Only here, because such a time ends the process in Wine's C library.
TEST_F(LoggerTest, ATimeThatCannotBeShownIsEmpty) {
  EXPECT_EQ(LocalTimeText(std::numeric_limits<std::time_t>::max()), "");
}

TEST_F(LoggerTest, FullDiskDropsTheLine) {
  Logger logger("source", 0);
  logger.LogNormal(1, "first", 0.0);
  rlimit before;
  getrlimit(RLIMIT_FSIZE, &before);
  const rlimit full{std::filesystem::file_size(live), before.rlim_max};
  std::signal(SIGXFSZ, SIG_IGN);
  setrlimit(RLIMIT_FSIZE, &full);
  logger.LogNormal(1, "second", 0.0);
  logger.LogNormal(1, std::string(100000, 'x'), 0.0);
  setrlimit(RLIMIT_FSIZE, &before);
  logger.LogNormal(1, "third", 0.0);
  EXPECT_EQ(Lines(live).size(), 2U);
}

}  // namespace logging
