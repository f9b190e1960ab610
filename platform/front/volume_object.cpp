#include "platform/front/object.h"
#include "platform/front/objects.h"

namespace platform {

namespace {

class EndpointVolume final : public Object<IAudioEndpointVolume> {
 public:
  explicit EndpointVolume(const Context& context) : Object(context) {}

  HRESULT GetChannelCount(UINT* count) override {
    return CallOnEndpoint("IAudioEndpointVolume::GetChannelCount", {}, [&](const EndpointState& endpoint) {
      return Give(count, static_cast<UINT>(endpoint.levels.size()));
    });
  }

  HRESULT SetChannelVolumeLevelScalar(UINT channel, float level, const GUID*) override {
    return Call("IAudioEndpointVolume::SetChannelVolumeLevelScalar", {{"channel", channel}, {"level", level}},
                [&] { return GetBackend().SetLevel(Key(), channel, level); });
  }

  HRESULT GetChannelVolumeLevelScalar(UINT channel, float* level) override {
    return CallOnEndpoint("IAudioEndpointVolume::GetChannelVolumeLevelScalar", {{"channel", channel}},
                          [&](const EndpointState& endpoint) -> HRESULT {
                            if (level == nullptr) return E_POINTER;
                            if (channel >= endpoint.levels.size()) return E_INVALIDARG;
                            *level = endpoint.levels[channel];
                            return S_OK;
                          });
  }

  HRESULT SetMute(BOOL muted, const GUID*) override {
    const bool wanted = muted != FALSE;
    return CallOnEndpoint("IAudioEndpointVolume::SetMute", {{"muted", wanted}}, [&](const EndpointState& endpoint) {
      return endpoint.muted == wanted ? S_FALSE : GetBackend().SetMute(Key(), wanted);
    });
  }

  HRESULT GetMute(BOOL* muted) override {
    return CallOnEndpoint("IAudioEndpointVolume::GetMute", {},
                          [&](const EndpointState& endpoint) { return Give(muted, endpoint.muted ? TRUE : FALSE); });
  }

 private:
  // Other programs change the same volumes, so every operation goes by what the audio system has now.
  template <class Body>
  HRESULT CallOnEndpoint(Operation operation, std::initializer_list<Argument> arguments, Body body) {
    return Call(operation, arguments, [&] {
      EndpointState endpoint;
      const HRESULT status = GetBackend().Find(Key(), &endpoint);
      return status == S_OK ? body(endpoint) : status;
    });
  }
};

}  // namespace

HRESULT NewVolume(const Context& context, IAudioEndpointVolume** volume) {
  return HandOut<EndpointVolume>(volume, context);
}

}  // namespace platform
