// The interface of libaudioplatform on Windows, which has no such library, so that the tests are the same: initialises
// COM on the thread and puts the virtual machine in front of the system's Core Audio.

#include <cstdlib>
#include <cstring>
#include <exception>
#include <string>

#include "platform/audio_platform.h"
#include "platform/windows/machine_front.h"

namespace {

bool g_isInitialized = false;
std::string g_error;

}  // namespace

std::int32_t AudioPlatformInitialize(const char* description) {
  if (!g_isInitialized) {
    const HRESULT status = CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    if (FAILED(status)) return status;
  }
  try {
    g_error.clear();
    virtual_audio::PutMachineInFront(description == nullptr ? "" : description);
    // The calls that tests make themselves go to the machine too. Its clock must be the virtual one, because the real
    // one calls Sleep, which is replaced by now.
    virtual_audio::PutMachineInFrontOf(GetModuleHandleW(nullptr));
    g_isInitialized = true;
    return S_OK;
  } catch (const std::exception& error) {
    if (!g_isInitialized) CoUninitialize();
    g_error = error.what();
    return E_INVALIDARG;
  }
}

void AudioPlatformUninitialize() {
  if (!g_isInitialized) return;
  virtual_audio::TakeMachineAway();
  CoUninitialize();
  g_isInitialized = false;
}

char* AudioPlatformState() { return g_isInitialized ? _strdup(virtual_audio::MachineState().c_str()) : nullptr; }

const char* AudioPlatformError() { return g_error.c_str(); }
