#include "host/endpoints/platform.h"

#include <fmt/core.h>

#include <cstdlib>
#include <memory>

#include "host/base/failure.h"
#include "platform/audio_platform.h"
#include "platform/core_audio.h"

namespace host {

const char* const kSystemPlatform = "pulse";
const char* const kPlatformHelp =
    "'pulse' for the sound server, PulseAudio or PipeWire, 'pulse:SERVER' for the one at that address, 'virtual' for "
    "the built-in virtual machine, 'virtual:FILE' for the one described in FILE, or 'auto' for 'pulse'";

Platform::Platform(const std::string& description) {
  const std::int32_t status = AudioPlatformInitialize(description.c_str());
  if (status == S_OK) return;
  const std::string message = fmt::format("The platform '{}' can't be used: {}", description, AudioPlatformError());
  if (status == E_INVALIDARG) {
    throw Failure(ExitCode::kBadInput, message, fmt::format("--platform takes {}.", kPlatformHelp));
  }
  throw Failure(
      ExitCode::kBroken, message,
      "Check that the sound server runs for this user. '--platform virtual' simulates one: nothing is played or heard.");
}

Platform::~Platform() { AudioPlatformUninitialize(); }

std::string LastingPlatform(const std::string& description) {
  const char* const server = std::getenv("PULSE_SERVER");
  const bool isNamed = description == kSystemPlatform && server != nullptr && *server != '\0';
  return isNamed ? description + ":" + server : description;
}

std::optional<RefusedOperation> LastRefusedOperation() {
  const std::unique_ptr<char, decltype(&std::free)> state(AudioPlatformState(), &std::free);
  return state == nullptr ? std::nullopt : RefusedOperationIn(state.get());
}

}  // namespace host
