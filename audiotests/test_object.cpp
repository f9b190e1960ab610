#include "audiotests/test_object.h"

#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "logging/log_directory.h"

namespace ZQ_RMT_TESTS_AUDIO {
namespace {

// The playback test's object goes by this name too: the framework's log readers know the module by it.
constexpr const char* kSourceName = "ZQ_RMT_TESTS_AUDIO::AudioRecordTestClass";
constexpr std::int32_t kComponentNumber = 44000000;
constexpr const char* kLogFile = "ZQRMLOG.LOG";

logging::Logger* NewLogger(const std::string& path) {
  try {
    return new logging::Logger(kSourceName, kComponentNumber);
  } catch (const std::filesystem::filesystem_error&) {
    // The redirect file could not be looked for; its answer is overruled by SetLogFile anyway.
    return new logging::Logger(kSourceName, path, kComponentNumber);
  }
}

}  // namespace

logging::Logger* CreateTestLogger() {
  const std::string path = logging::GetLogDirectory().File(kLogFile);
  logging::Logger* const logger = NewLogger(path);
  logger->SetLogFile(path);
  try {
    logger->LogNormal(0, "ZQRMTTestsAudio.dll. Version:" ZQRMT_VERSION, 0.0);
  } catch (const std::filesystem::filesystem_error&) {
    // Nothing above this call could handle it; each test call meets the same probe and reports it to the host.
  }
  return logger;
}

std::unique_ptr<ZQ_RMT_MODELS::RMTDataContract> CreateContract() {
  return std::make_unique<ZQ_RMT_MODELS::RMTDataContract>();
}

char16_t* DuplicateText(const std::u16string& text) {
  const std::size_t bytes = (text.size() + 1) * sizeof(char16_t);
  void* const copy = std::malloc(bytes);
  return copy == nullptr ? nullptr : static_cast<char16_t*>(std::memcpy(copy, text.c_str(), bytes));
}

}  // namespace ZQ_RMT_TESTS_AUDIO
