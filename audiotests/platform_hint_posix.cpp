#include "audiotests/platform_hint.h"
#include "audiotests/zqrmt_return_codes.h"
#include "platform/core_audio.h"

namespace ZQ_RMT_TESTS_AUDIO {
namespace {

constexpr std::int32_t kLineId = 3;

// Asks as an observer, which leaves no trace on a platform.
bool IsOnPlatform() {
  void* object = nullptr;
  const HRESULT status = CoCreateInstance(core_audio::ObserverEnumeratorClass(), nullptr, CLSCTX_ALL,
                                          core_audio::InterfaceId<IMMDeviceEnumerator>(), &object);
  if (object != nullptr) static_cast<IMMDeviceEnumerator*>(object)->Release();
  return status != CO_E_NOTINITIALIZED;
}

}  // namespace

void LogMissingPlatform(std::int32_t outcome, logging::Logger& logger) {
  if (outcome != ZQRMT_OUTCOME_PLATFORM || IsOnPlatform()) return;
  logger.LogWarning(kLineId,
                    "The calling thread is on no audio platform. The host must call AudioPlatformInitialize of "
                    "libaudioplatform on it first, and look at the result.",
                    0.0);
}

}  // namespace ZQ_RMT_TESTS_AUDIO
