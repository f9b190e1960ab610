#include "audiotests/module_logger.h"

#include <exception>

#include "audiotests/zqrmt_return_codes.h"
#include "logging/log_directory.h"
#include "logging/log_file.h"

namespace ZQ_RMT_TESTS_AUDIO {
namespace {

// The playback test logs under this name too: the framework's log readers know the module by it.
constexpr char kSourceName[] = "ZQ_RMT_TESTS_AUDIO::AudioRecordTestClass";
constexpr std::int32_t kComponentNumber = ZQRMT_AUDIO_COMPONENT * 1000000;

}  // namespace

logging::Logger* CreateTestLogger() {
  // Given the path, the logger doesn't look at the redirect file, which is for other modules.
  auto* const logger =
      new logging::Logger(kSourceName, logging::GetLogDirectory().File(logging::kDefaultLogName), kComponentNumber);
  try {
    logger->LogNormal(0, "ZQRMTTestsAudio.dll. Version:" ZQRMT_VERSION, 0.0);
  } catch (const std::exception&) {
    // Nobody above a static initialiser could handle it. Each test call meets the same probe, or the same lack of
    // memory, and reports it to the host.
  }
  return logger;
}

}  // namespace ZQ_RMT_TESTS_AUDIO
