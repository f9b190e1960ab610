#include "tests/module/bad_log.h"
#include "tests/support/machines.h"
#include "tests/support/module_under_test.h"

namespace {

namespace fs = std::filesystem;

const BadLog kBadLinks[] = {
    {"no_parent", [](const fs::path& log) { fs::create_symlink("missing/deeper", log); }, "(null)"},
    {"cannot_be_examined", [](const fs::path& log) { fs::create_symlink("log", log); }, "(null)"},
    {"full_disk",
     [](const fs::path& log) {
       fs::create_directory(log);
       fs::create_symlink("/dev/full", log / "ZQRMLOG.LOG");
     },
     "(null)"},
    {"live_log_cannot_be_opened",
     [](const fs::path& log) {
       fs::create_directory(log);
       fs::create_symlink(log / "missing" / "file", log / "ZQRMLOG.LOG");
     },
     "Audio Playback Test passed."},
};

TEST(LogTest, ACallOnNoPlatformSaysWhatTheHostMissed) {
  ModuleUnderTest module;
  const std::size_t before = module.LogLines().size();
  for (const std::string& reply : {module.Play(kPlayContract), module.Record(kRecordContract)}) {
    EXPECT_NE(reply.find(ReturnCode(ZQRMT_RETURN_PLATFORM)), std::string::npos) << reply;
  }
  std::size_t hints = 0;
  for (const std::string& line : module.LogLines()) {
    hints += line.starts_with("744000003, warning: The calling thread is on no audio platform");
  }
  EXPECT_EQ(hints, 2U);
  EXPECT_EQ(module.LogLines().size() - before, 2U + 3U + 2U) << "two progress lines, an outcome each, a hint each";
  module.SetFlag("error");
  EXPECT_NE(module.Play(kPlayContract).find(ReturnCode(ZQRMT_RETURN_PLATFORM)), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(Links, BadLogTest, testing::ValuesIn(kBadLinks),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace
