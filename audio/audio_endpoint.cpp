#include "audio/audio_endpoint.h"

#include <utility>

#include "audio/platform_call.h"
#include "text/narrow.h"

namespace audio {
namespace {

std::u16string LowerId(IMMDevice& device) {
  LPWSTR text = nullptr;
  const HRESULT status = device.GetId(&text);
  const CoTaskMemory<WCHAR> id(text);
  Require(status, id);
  return text::LowerWide(core_audio::TextFrom(id.get()));
}

ComPtr<IMMDevice> FindActive(IMMDeviceEnumerator& enumerator, EDataFlow flow, std::u16string name) {
  ComPtr<IMMDeviceCollection> endpoints;
  Require(enumerator.EnumAudioEndpoints(flow, DEVICE_STATE_ACTIVE, endpoints.Receive()), endpoints);
  UINT count = 0;
  Require(endpoints->GetCount(&count));

  if (count != 0) name = text::LowerWide(std::move(name));
  // A count beyond 31 bits is taken for a negative one, so for no endpoint.
  for (std::int32_t index = 0; index < static_cast<std::int32_t>(count); ++index) {
    ComPtr<IMMDevice> device;
    Require(endpoints->Item(static_cast<UINT>(index), device.Receive()), device);
    if (name.find(LowerId(*device.Get())) != std::u16string::npos) return device;
  }
  throw kEndpointNotFound;
}

template <class Interface>
ComPtr<Interface> Activate(IMMDevice& device) {
  return RequireInterface<Interface>(
      [&](REFIID interfaceId, void** object) { return device.Activate(interfaceId, CLSCTX_ALL, nullptr, object); });
}

}  // namespace

AudioEndpointClass::AudioEndpointClass(EDataFlow flow) {
  enumerator_ = CreateEnumerator();
  Require(enumerator_->GetDefaultAudioEndpoint(flow, eConsole, device_.Receive()), device_);
  ActivateInterfaces();
}

AudioEndpointClass::AudioEndpointClass(EDataFlow flow, std::u16string name) {
  enumerator_ = CreateEnumerator();
  device_ = FindActive(*enumerator_.Get(), flow, std::move(name));
  ActivateInterfaces();
}

ComPtr<IMMDeviceEnumerator> AudioEndpointClass::CreateEnumerator() {
  return RequireInterface<IMMDeviceEnumerator>([](REFIID interfaceId, void** object) {
    return CoCreateInstance(core_audio::EnumeratorClass(), nullptr, CLSCTX_ALL, interfaceId, object);
  });
}

void AudioEndpointClass::ActivateInterfaces() {
  client_ = Activate<IAudioClient>(*device_.Get());
  volume_ = Activate<IAudioEndpointVolume>(*device_.Get());
}

std::uint32_t AudioEndpointClass::GetChannelCount() const {
  UINT count = 0;
  Require(volume_->GetChannelCount(&count));
  return count;
}

float AudioEndpointClass::GetChannelLevel(std::uint32_t channel) const {
  float level = 0.0F;
  Require(volume_->GetChannelVolumeLevelScalar(channel, &level));
  return level;
}

void AudioEndpointClass::SetChannelLevel(std::uint32_t channel, float level) {
  Require(volume_->SetChannelVolumeLevelScalar(channel, level, nullptr));
}

bool AudioEndpointClass::GetMute() const {
  BOOL muted = FALSE;
  Require(volume_->GetMute(&muted));
  return muted != FALSE;
}

void AudioEndpointClass::SetMute(bool muted) {
  if (GetMute() == muted) return;
  Require(volume_->SetMute(muted ? TRUE : FALSE, nullptr));
}

}  // namespace audio
