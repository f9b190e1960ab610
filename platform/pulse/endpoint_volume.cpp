#include "platform/pulse/endpoint_volume.h"

#include <cmath>
#include <utility>

#include "platform/pulse/object.h"

namespace pulse_audio {

namespace {

class EndpointVolume final : public Object<IAudioEndpointVolume> {
 public:
  EndpointVolume(const std::shared_ptr<Connection>& connection, EndpointName name)
      : Object(connection), name_(std::move(name)) {}

  HRESULT GetChannelCount(UINT* count) override {
    return CallOnEndpoint([&](const Endpoint& endpoint) -> HRESULT {
      if (count == nullptr) return E_POINTER;
      *count = static_cast<UINT>(endpoint.levels.size());
      return S_OK;
    });
  }

  HRESULT SetChannelVolumeLevelScalar(UINT channel, float level, const GUID*) override {
    return CallOnEndpoint([&](const Endpoint& endpoint) -> HRESULT {
      const double wanted = std::round(double{level} * PA_VOLUME_NORM);
      // A level that is no number is neither.
      const bool isLevel = wanted >= PA_VOLUME_MUTED && wanted <= PA_VOLUME_MAX;
      if (channel >= endpoint.levels.size() || !isLevel) return E_INVALIDARG;
      pa_cvolume volume = endpoint.volume;
      volume.values[channel] = static_cast<pa_volume_t>(wanted);
      const auto set =
          name_.flow == eRender ? &pa_context_set_sink_volume_by_name : &pa_context_set_source_volume_by_name;
      int error = PA_OK;
      pa_operation* const request = set(GetConnection()->Context(), name_.name.c_str(), &volume, &NoteSuccess, &error);
      return GetConnection()->Finish(request, error);
    });
  }

  HRESULT GetChannelVolumeLevelScalar(UINT channel, float* level) override {
    return CallOnEndpoint([&](const Endpoint& endpoint) -> HRESULT {
      if (level == nullptr) return E_POINTER;
      if (channel >= endpoint.levels.size()) return E_INVALIDARG;
      *level = endpoint.levels[channel];
      return S_OK;
    });
  }

  HRESULT SetMute(BOOL muted, const GUID*) override {
    const bool wanted = muted != FALSE;
    return CallOnEndpoint([&](const Endpoint& endpoint) -> HRESULT {
      if (endpoint.muted == wanted) return S_FALSE;
      const auto set = name_.flow == eRender ? &pa_context_set_sink_mute_by_name : &pa_context_set_source_mute_by_name;
      int error = PA_OK;
      pa_operation* const request =
          set(GetConnection()->Context(), name_.name.c_str(), wanted ? 1 : 0, &NoteSuccess, &error);
      return GetConnection()->Finish(request, error);
    });
  }

  HRESULT GetMute(BOOL* muted) override {
    return CallOnEndpoint([&](const Endpoint& endpoint) -> HRESULT {
      if (muted == nullptr) return E_POINTER;
      *muted = endpoint.muted ? TRUE : FALSE;
      return S_OK;
    });
  }

 private:
  // Other programs change the same volumes, so every operation goes by what the server has now.
  template <class Body>
  HRESULT CallOnEndpoint(Body body) {
    return Call([&] {
      Endpoint endpoint;
      const HRESULT status = FindEndpoint(*GetConnection(), name_, &endpoint);
      return status == S_OK ? body(endpoint) : status;
    });
  }

  const EndpointName name_;
};

}  // namespace

HRESULT NewEndpointVolume(const std::shared_ptr<Connection>& connection, const EndpointName& endpoint,
                          IAudioEndpointVolume** volume) {
  return HandOut<EndpointVolume>(volume, connection, endpoint);
}

}  // namespace pulse_audio
