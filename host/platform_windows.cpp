#include <fmt/format.h>
#include <objbase.h>

#include "audio/platform/windows/machine_front.h"
#include "host/failure.h"
#include "host/platform.h"

namespace host {

Platform::Platform(const std::string& description) {
  const HRESULT status = CoInitializeEx(nullptr, COINIT_MULTITHREADED);
  if (FAILED(status)) {
    throw Failure(ExitCode::kBroken, fmt::format("COM can't be initialised: {:#010x}.", static_cast<unsigned>(status)),
                  "Try again; if it stays, the system's audio service may have to be restarted.");
  }
  if (description == "coreaudio") return;
  try {
    virtual_audio::PutMachineInFront(description);
  } catch (const std::exception& error) {
    CoUninitialize();
    throw Failure(
        ExitCode::kBadInput, fmt::format("The platform '{}' can't be used: {}", description, error.what()),
        "--platform takes 'coreaudio', or 'virtual', or 'virtual:FILE' with the description of a virtual machine.");
  }
}

Platform::~Platform() {
  virtual_audio::TakeMachineAway();
  CoUninitialize();
}

}  // namespace host
