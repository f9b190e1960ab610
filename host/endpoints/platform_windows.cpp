#include <fmt/core.h>
#include <objbase.h>

#include "host/base/failure.h"
#include "host/endpoints/platform.h"
#include "platform/windows/machine_front.h"

namespace host {

const char* const kSystemPlatform = "coreaudio";
const char* const kPlatformHelp =
    "'coreaudio' for the system's sound, 'virtual' for the built-in virtual machine, 'virtual:FILE' for the one "
    "described in FILE, or 'auto' for 'coreaudio'";

Platform::Platform(const std::string& description) {
  const HRESULT status = CoInitializeEx(nullptr, COINIT_MULTITHREADED);
  if (FAILED(status)) {
    throw Failure(ExitCode::kBroken, fmt::format("COM can't be initialised: {:#010x}.", static_cast<unsigned>(status)),
                  "Try again; if it stays, restart the system's audio service. '--platform virtual' simulates one.");
  }
  if (description == kSystemPlatform) return;
  try {
    virtual_audio::PutMachineInFront(description);
  } catch (const std::exception& error) {
    CoUninitialize();
    throw Failure(ExitCode::kBadInput, fmt::format("The platform '{}' can't be used: {}", description, error.what()),
                  fmt::format("--platform takes {}.", kPlatformHelp));
  }
}

Platform::~Platform() {
  virtual_audio::TakeMachineAway();
  CoUninitialize();
}

std::string LastingPlatform(const std::string& description) { return description; }

std::optional<RefusedOperation> LastRefusedOperation() { return RefusedOperationIn(virtual_audio::MachineState()); }

}  // namespace host
