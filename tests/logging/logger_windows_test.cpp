// The log on Windows: paths, line ends, and how the system's errors are taken.

#include <windows.h>

#include <sstream>

#include "logging/file_probe.h"
#include "logging/log_file.h"
#include "tests/logging/logger_fixture.h"

namespace logging {

TEST_F(LoggerTest, PathsHaveDrivesAndBackslashes) {
  EXPECT_EQ(NormalizeLogName("D:\\x\\abc.log"), "D:\\x\\abc.LOG");
  EXPECT_EQ(NormalizeLogName("D:/x/abc.log"), kDefaultLogName);
  EXPECT_EQ(NormalizeLogName("\\\\server\\share\\abc"), "\\\\server\\share\\abc.LOG");
}

TEST_F(LoggerTest, LinesEndWithCarriageReturnAndLineFeed) {
  Logger("source", 0).LogNormal(1, "one\ntwo", 0.0);
  std::ostringstream contents;
  contents << std::ifstream(live, std::ios::binary).rdbuf();
  EXPECT_TRUE(contents.str().ends_with("normal: one\r\ntwo, [source]\r\n")) << contents.str();
}

// Errors 53 and 267 mean "not found" too, but Wine's file functions never report them.
TEST_F(LoggerTest, SomeErrorsMeanNotFoundAndOthersAreRaised) {
  const std::tuple<std::wstring, DWORD, bool> kRows[] = {{L"C:\\windows\\none", ERROR_FILE_NOT_FOUND, true},
                                                         {L"C:\\none\\none", ERROR_PATH_NOT_FOUND, true},
                                                         {L"", ERROR_PATH_NOT_FOUND, true},
                                                         {L"C:\\a?b", ERROR_INVALID_NAME, true},
                                                         {L"\\\\.\\none", ERROR_BAD_DEV_TYPE, false}};
  for (const auto& [path, error, isNotFound] : kRows) {
    ASSERT_EQ(GetFileAttributesW(path.c_str()), INVALID_FILE_ATTRIBUTES);
    ASSERT_EQ(GetLastError(), error) << std::filesystem::path(path);
    if (isNotFound) {
      EXPECT_FALSE(Exists(path));
    } else {
      ExpectRaised("exists", [&path = path] { Exists(path); });
    }
  }
  EXPECT_TRUE(Exists(L"C:\\windows"));
}

TEST_F(LoggerTest, ARotationThatAnotherProcessHasBegunIsLeftToIt) {
  Write(live, std::string(5000001, 'x'));
  const HANDLE other = CreateFileA(live.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                   nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  OVERLAPPED turn{};
  turn.OffsetHigh = 0x7FFFFFFF;
  ASSERT_TRUE(LockFileEx(other, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &turn));
  Logger logger("source", 0);
  logger.LogNormal(1, "appended", 0.0);
  EXPECT_GT(std::filesystem::file_size(live), 5000001U);
  CloseHandle(other);
  logger.LogNormal(1, "rotated", 0.0);
  EXPECT_EQ(Lines(live).size(), 1U);
}

}  // namespace logging
