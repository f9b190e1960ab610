#include "tests/module/bad_log.h"

namespace {

namespace fs = std::filesystem;

const BadLog kBadLogs[] = {
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

INSTANTIATE_TEST_SUITE_P(Links, BadLogTest, testing::ValuesIn(kBadLogs),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace
