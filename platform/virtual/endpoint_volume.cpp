#include "platform/virtual/endpoint_volume.h"

#include "platform/virtual/object.h"

namespace virtual_audio {

namespace {

class EndpointVolume final : public Object<IAudioEndpointVolume> {
 public:
  EndpointVolume(const std::shared_ptr<Machine>& machine, Endpoint& endpoint) : Object(machine, &endpoint) {}

  HRESULT GetChannelCount(UINT* count) override {
    return Call("IAudioEndpointVolume::GetChannelCount", {}, [&]() -> HRESULT {
      if (count == nullptr) return E_POINTER;
      *count = static_cast<UINT>(GetEndpoint().levels.size());
      return S_OK;
    });
  }

  HRESULT SetChannelVolumeLevelScalar(UINT channel, float level, const GUID*) override {
    return Call("IAudioEndpointVolume::SetChannelVolumeLevelScalar", {{"channel", channel}, {"level", level}},
                [&]() -> HRESULT {
                  // A level that is no number is neither.
                  const bool isLevel = level >= 0.0F && level <= 1.0F;
                  if (channel >= GetEndpoint().levels.size() || !isLevel) return E_INVALIDARG;
                  GetEndpoint().levels[channel] = level;
                  return S_OK;
                });
  }

  HRESULT GetChannelVolumeLevelScalar(UINT channel, float* level) override {
    return Call("IAudioEndpointVolume::GetChannelVolumeLevelScalar", {{"channel", channel}}, [&]() -> HRESULT {
      if (level == nullptr) return E_POINTER;
      if (channel >= GetEndpoint().levels.size()) return E_INVALIDARG;
      *level = GetEndpoint().levels[channel];
      return S_OK;
    });
  }

  HRESULT SetMute(BOOL muted, const GUID*) override {
    const bool wanted = muted != FALSE;
    return Call("IAudioEndpointVolume::SetMute", {{"muted", wanted}}, [&]() -> HRESULT {
      if (GetEndpoint().muted == wanted) return S_FALSE;
      GetEndpoint().muted = wanted;
      return S_OK;
    });
  }

  HRESULT GetMute(BOOL* muted) override {
    return Call("IAudioEndpointVolume::GetMute", {}, [&]() -> HRESULT {
      if (muted == nullptr) return E_POINTER;
      *muted = GetEndpoint().muted ? TRUE : FALSE;
      return S_OK;
    });
  }
};

}  // namespace

HRESULT NewEndpointVolume(const std::shared_ptr<Machine>& machine, Endpoint& endpoint, IAudioEndpointVolume** volume) {
  return HandOut<EndpointVolume>(volume, machine, endpoint);
}

}  // namespace virtual_audio
