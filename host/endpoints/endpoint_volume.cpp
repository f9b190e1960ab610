#include "host/endpoints/endpoint_volume.h"

#include "host/endpoints/device_properties.h"
#include "host/endpoints/handed_out.h"

namespace host {

EndpointVolume::EndpointVolume(IMMDevice& device) {
  const IID& iid = core_audio::InterfaceId<IAudioEndpointVolume>();
  if (FAILED(device.Activate(iid, CLSCTX_ALL, nullptr, volume_.ReceiveAny()))) volume_.Reset();
}

std::optional<EndpointVolume> EndpointVolume::Of(Flow flow, const std::string& id) {
  ComPtr<IMMDeviceEnumerator> enumerator;
  ComPtr<IMMDeviceCollection> devices;
  UINT count = 0;
  if (FAILED(StatusWith(CoCreateInstance(core_audio::ObserverEnumeratorClass(), nullptr, CLSCTX_ALL,
                                         core_audio::InterfaceId<IMMDeviceEnumerator>(), enumerator.ReceiveAny()),
                        enumerator)) ||
      FAILED(StatusWith(enumerator->EnumAudioEndpoints(flow == Flow::kRender ? eRender : eCapture, DEVICE_STATE_ACTIVE,
                                                       devices.Receive()),
                        devices)) ||
      FAILED(devices->GetCount(&count))) {
    return std::nullopt;
  }
  for (UINT index = 0; index < count; ++index) {
    ComPtr<IMMDevice> device;
    std::string found;
    if (FAILED(StatusWith(devices->Item(index, device.Receive()), device))) continue;
    if (FAILED(ReadDeviceId(*device.Get(), found))) continue;
    if (found == id) return EndpointVolume(*device.Get());
  }
  return std::nullopt;
}

std::optional<bool> EndpointVolume::Muted() const {
  BOOL muted = FALSE;
  if (!volume_ || FAILED(volume_->GetMute(&muted))) return std::nullopt;
  return muted != FALSE;
}

std::optional<std::vector<float>> EndpointVolume::Levels() const {
  UINT channels = 0;
  if (!volume_ || FAILED(volume_->GetChannelCount(&channels)) || channels == 0) return std::nullopt;
  std::vector<float> levels(channels);
  for (UINT channel = 0; channel < channels; ++channel) {
    if (FAILED(volume_->GetChannelVolumeLevelScalar(channel, &levels[channel]))) return std::nullopt;
  }
  return levels;
}

bool EndpointVolume::SetMuted(bool muted) const {
  return volume_ && SUCCEEDED(volume_->SetMute(muted ? TRUE : FALSE, nullptr));
}

bool EndpointVolume::SetLevels(const std::vector<float>& levels) const {
  if (!volume_) return false;
  for (UINT channel = 0; channel < levels.size(); ++channel) {
    if (FAILED(volume_->SetChannelVolumeLevelScalar(channel, levels[channel], nullptr))) return false;
  }
  return true;
}

}  // namespace host
