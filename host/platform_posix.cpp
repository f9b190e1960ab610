#include "host/platform.h"

#include <fmt/format.h>

#include "audio/platform/audio_platform.h"
#include "audio/platform/core_audio.h"
#include "host/failure.h"

namespace host {

Platform::Platform(const std::string& description) {
  const std::int32_t status = AudioPlatformInitialize(description.c_str());
  if (status == S_OK) return;
  throw Failure(status == E_INVALIDARG ? ExitCode::kBadInput : ExitCode::kBroken,
                fmt::format("The platform '{}' can't be used: {}", description, AudioPlatformError()),
                "--platform takes 'virtual', or 'virtual:FILE' with the description of a virtual machine.");
}

Platform::~Platform() {
  AudioPlatformUninitialize();
}

}  // namespace host
