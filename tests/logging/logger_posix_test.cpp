// Failures of the file system that a test can cause on POSIX systems only.

#include <fcntl.h>
#include <pthread.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <limits>
#include <thread>

#include "logging/file_probe.h"
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

TEST_F(LoggerTest, FullDiskDropsTheLineWithItsBeginning) {
  Logger logger("source", 0);
  logger.LogNormal(1, "first", 0.0);
  const std::uintmax_t size = std::filesystem::file_size(live);
  rlimit before;
  getrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, SIG_IGN);
  for (const rlim_t room : {0U, 10U}) {
    const rlimit full{size + room, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &full);
    logger.LogNormal(1, "second", 0.0);
    logger.LogNormal(1, std::string(100000, 'x'), 0.0);
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(std::filesystem::file_size(live), size);
  }
  logger.LogNormal(1, "third", 0.0);
  EXPECT_EQ(Lines(live).size(), 2U);
}

TEST_F(LoggerTest, ARotationThatAnotherProcessHasBegunIsLeftToIt) {
  Write(live, std::string(5000001, 'x'));
  const int other = open(live.c_str(), O_WRONLY | O_CLOEXEC);
  struct flock turn {};
  turn.l_type = F_WRLCK;
  ASSERT_EQ(fcntl(other, F_OFD_SETLK, &turn), 0);
  Logger logger("source", 0);
  logger.LogNormal(1, "appended", 0.0);
  EXPECT_GT(std::filesystem::file_size(live), 5000001U);
  close(other);
  logger.LogNormal(1, "rotated", 0.0);
  EXPECT_EQ(Lines(live).size(), 1U);
  EXPECT_TRUE(std::filesystem::exists(directory + "/ZQRMLOG_1.LOG"));
}

TEST_F(LoggerTest, ARedirectFileThatIsNoFileIsNotWaitedFor) {
  const std::string redirect = directory + "/zqlgrphf.lef";
  ASSERT_EQ(mkfifo(redirect.c_str(), 0600), 0);
  EXPECT_EQ(Logger("source", 0).Path(), "/ZQRMLOG.LOG");
  std::filesystem::remove(redirect);
  std::filesystem::create_symlink("/dev/zero", redirect);
  EXPECT_EQ(Logger("source", 0).Path(), "/ZQRMLOG.LOG");
  std::filesystem::remove(redirect);
  Write(redirect, std::string(kMaxReadBytes + 1, 'x'));
  EXPECT_EQ(Logger("source", 0).Path(), std::string(kMaxReadBytes, 'x') + "/ZQRMLOG.LOG");
}

TEST_F(LoggerTest, APipeInTheLogsPlaceIsNotWaitedFor) {
  ASSERT_EQ(mkfifo(live.c_str(), 0600), 0);
  ExpectRaised("file_size", [] { Logger("source", 0).LogNormal(1, "", 0.0); });
  AppendLine(live, "nobody reads\n");
  const int reader = open(live.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  AppendLine(live, "somebody does\n");
  char byte;
  EXPECT_EQ(read(reader, &byte, 1), 0) << "a pipe gets no lines";
  close(reader);
}

// A link in a directory where others can put one may be theirs, and lead to a file that only this process may write to.
TEST_F(LoggerTest, LinksAreFollowedOnlyWhereNobodyElseCanPutOne) {
  const std::string target = parent / "target";
  Logger logger("source", 0);
  // Only root can give a directory away, to somebody who could put a link there.
  constexpr uid_t kSomebody = 12345;
  const uid_t own = geteuid();
  for (const auto& [mode, owner] : {std::pair(0755, own), {0777, own}, {0755, own == 0 ? kSomebody : own}}) {
    const bool isShared = mode == 0777 || owner != own;
    for (const bool isSymbolic : {false, true}) {
      Write(target);
      if (isSymbolic) {
        std::filesystem::create_symlink(target, live);
      } else {
        std::filesystem::create_hard_link(target, live);
      }
      std::filesystem::permissions(directory, std::filesystem::perms(mode));
      ASSERT_EQ(chown(directory.c_str(), owner, static_cast<gid_t>(-1)), 0);
      logger.LogNormal(1, "", 0.0);
      EXPECT_EQ(Lines(target).size(), isShared ? 0U : 1U) << isSymbolic << ' ' << mode << ' ' << owner;
      std::filesystem::remove(live);
    }
  }
  logger.LogNormal(1, "", 0.0);
  EXPECT_EQ(Lines(live).size(), 1U) << "a plain file in a shared directory";
}

TEST_F(LoggerTest, ALogInAGroupsDirectoryIsTheGroupsWhateverTheUmask) {
  const mode_t before = umask(0077);
  for (const auto& [ofDirectory, ofLog] : {std::pair(0755, 0600), {0775, 0600}, {02755, 0600}, {02775, 0660}}) {
    ASSERT_EQ(chmod(directory.c_str(), static_cast<mode_t>(ofDirectory)), 0);
    AppendLine(live, "line\n");
    EXPECT_EQ(std::filesystem::status(live).permissions(), std::filesystem::perms(ofLog)) << ofDirectory;
    std::filesystem::remove(live);
  }
  Write(live, "");
  EXPECT_EQ(ReadWholeFile(live), "");
  EXPECT_EQ(std::filesystem::status(live).permissions(), std::filesystem::perms(0600)) << "reading changes nothing";
  umask(before);
}

TEST_F(LoggerTest, AThreadThatIsCancelledInACallEndsItsLineFirst) {
  std::thread([] {
    pthread_cancel(pthread_self());
    AppendLine(live, "line\n");
    EXPECT_EQ(ReadWholeFile(live), "line\n");
    pthread_testcancel();
    ADD_FAILURE() << "it ends here";
  }).join();
  EXPECT_EQ(Lines(live).size(), 1U);
}

TEST_F(LoggerTest, TheDirectoryIsReadableWhateverTheUmask) {
  const std::string made = directory + "/made";
  for (const mode_t mask : {0077U, 0U}) {
    const mode_t before = umask(mask);
    EnsureDirectory(made);
    umask(before);
    EXPECT_EQ(std::filesystem::status(made).permissions(), std::filesystem::perms(0755));
    std::filesystem::remove(made);
  }
}

}  // namespace logging
