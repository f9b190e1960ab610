#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/core_audio.h"

namespace platform {

// Every operation that is traced and can be told to fail.
inline constexpr std::array<std::string_view, 30> kOperations = {
    "CoCreateInstance",
    "PropVariantClear",
    "Sleep",
    "IMMDeviceEnumerator::EnumAudioEndpoints",
    "IMMDeviceEnumerator::GetDefaultAudioEndpoint",
    "IMMDeviceEnumerator::GetDevice",
    "IMMDeviceCollection::GetCount",
    "IMMDeviceCollection::Item",
    "IMMDevice::Activate",
    "IMMDevice::OpenPropertyStore",
    "IMMDevice::GetId",
    "IMMDevice::GetState",
    "IPropertyStore::GetValue",
    "IAudioClient::Initialize",
    "IAudioClient::GetBufferSize",
    "IAudioClient::GetCurrentPadding",
    "IAudioClient::IsFormatSupported",
    "IAudioClient::Start",
    "IAudioClient::Stop",
    "IAudioClient::GetService",
    "IAudioRenderClient::GetBuffer",
    "IAudioRenderClient::ReleaseBuffer",
    "IAudioCaptureClient::GetBuffer",
    "IAudioCaptureClient::ReleaseBuffer",
    "IAudioCaptureClient::GetNextPacketSize",
    "IAudioEndpointVolume::GetChannelCount",
    "IAudioEndpointVolume::SetChannelVolumeLevelScalar",
    "IAudioEndpointVolume::GetChannelVolumeLevelScalar",
    "IAudioEndpointVolume::SetMute",
    "IAudioEndpointVolume::GetMute",
};

// The place of `name` in kOperations, or its size when there is no such operation.
constexpr std::size_t OperationIndex(std::string_view name) {
  std::size_t index = 0;
  while (index < kOperations.size() && kOperations[index] != name) ++index;
  return index;
}

// One of kOperations, made from its name. A name that isn't there doesn't compile.
class Operation {
 public:
  consteval Operation(const char* name) : index_(OperationIndex(name)) {
    if (index_ == kOperations.size()) throw "no such operation";
  }
  constexpr std::size_t Index() const { return index_; }

 private:
  std::size_t index_;
};

// A status that an operation gives instead of being carried out.
struct Fault {
  std::size_t operation;  // in kOperations
  std::int64_t call = 1;  // which of its calls, from 1, over all objects
  HRESULT status = S_OK;
  bool sticky = false;    // also all calls after that one
  bool observer = false;  // of an observer's calls, which are counted by themselves
};

}  // namespace platform
