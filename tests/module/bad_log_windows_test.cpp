#include <windows.h>

#include "tests/module/bad_log.h"
#include "tests/support/machines.h"
#include "tests/support/module_under_test.h"

namespace {

const BadLog kWindowsBadLogs[] = {
    {"no_parent", [](const std::filesystem::path& log) { std::filesystem::remove_all(log.parent_path()); }, "(null)"},
};

INSTANTIATE_TEST_SUITE_P(Windows, BadLogTest, testing::ValuesIn(kWindowsBadLogs),
                         [](const auto& test) { return std::string(test.param.name); });

// Another program has the live log open and shares it, or doesn't.
TEST(SharedLog, LinesAreWrittenWhereOtherProgramsLetThemAndLostElsewhere) {
  for (const DWORD shared : {FILE_SHARE_READ | FILE_SHARE_WRITE, 0}) {
    ModuleUnderTest module;
    module.StartMachine(QuietMachine());
    const std::size_t before = module.LogLines().size();
    const HANDLE other = CreateFileW((module.LogDirectory() / "ZQRMLOG.LOG").c_str(), GENERIC_READ, shared, nullptr,
                                     OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(other, INVALID_HANDLE_VALUE);
    EXPECT_NE(module.Play(kPlayContract).find("Audio Playback Test passed."), std::string::npos);
    CloseHandle(other);
    EXPECT_EQ(module.LogLines().size() > before, shared != 0);
  }
}

}  // namespace
