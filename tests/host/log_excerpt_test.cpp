#include "host/call/log_excerpt.h"

#include <gtest/gtest.h>

#include <fstream>

#include "tests/support/temp_directory.h"

namespace {

void Append(const std::string& file, const std::string& text) {
  std::ofstream(file, std::ios::binary | std::ios::app) << text;
}

TEST(LogExcerptTest, IsWhatCameSinceAlsoAcrossARotation) {
  const TempDirectory directory;
  const std::string live = directory / "ZQRMLOG.LOG";
  const host::LogExcerpt fromNothing(live);
  EXPECT_TRUE(fromNothing.Lines().empty());
  Append(live, "before, before, before\r\n");
  const host::LogExcerpt excerpt(live);
  Append(live, "one\r\n\xE9\r\n");
  const std::vector<std::string> expected = {"one", "\xE9"};
  EXPECT_EQ(excerpt.Lines(), expected);
  EXPECT_EQ(fromNothing.Lines().size(), 3u);

  std::filesystem::rename(live, directory / "ZQRMLOG_1.LOG");
  Append(live, "two\n");
  EXPECT_EQ(excerpt.Lines(), (std::vector<std::string>{"one", "\xE9", "two"}));
}

}  // namespace
