#include "platform/pulse/device.h"

#include <utility>

#include "platform/caller_memory.h"
#include "platform/property.h"
#include "platform/pulse/audio_client.h"
#include "platform/pulse/endpoint_volume.h"
#include "platform/pulse/object.h"

namespace pulse_audio {

namespace {

class PropertyStore final : public Object<IPropertyStore> {
 public:
  PropertyStore(const std::shared_ptr<Connection>& connection, Endpoint endpoint)
      : Object(connection), endpoint_(std::move(endpoint)) {}

  HRESULT GetValue(REFPROPERTYKEY key, PROPVARIANT* value) override {
    if (value != nullptr) PropVariantInit(value);
    return Call([&] { return platform::GetProperty(endpoint_, key, value); });
  }

 private:
  const Endpoint endpoint_;
};

class Device final : public Object<IMMDevice> {
 public:
  Device(const std::shared_ptr<Connection>& connection, const Endpoint& endpoint)
      : Object(connection), name_(endpoint.Name()), id_(endpoint.id) {}

  HRESULT Activate(REFIID iid, DWORD, PROPVARIANT*, void** object) override {
    Empty(object);
    return Call([&]() -> HRESULT {
      if (object == nullptr) return E_POINTER;
      Endpoint endpoint;
      const HRESULT status = FindEndpoint(*GetConnection(), name_, &endpoint);
      if (status != S_OK) return status;
      if (endpoint.state != DEVICE_STATE_ACTIVE) return AUDCLNT_E_DEVICE_INVALIDATED;
      if (iid == InterfaceId<IAudioClient>()) {
        return NewAudioClient(GetConnection(), name_, reinterpret_cast<IAudioClient**>(object));
      }
      if (iid == InterfaceId<IAudioEndpointVolume>()) {
        return NewEndpointVolume(GetConnection(), name_, reinterpret_cast<IAudioEndpointVolume**>(object));
      }
      return E_NOINTERFACE;
    });
  }

  HRESULT OpenPropertyStore(DWORD access, IPropertyStore** store) override {
    Empty(store);
    return Call([&]() -> HRESULT {
      if (store == nullptr) return E_POINTER;
      if (access != STGM_READ) return E_INVALIDARG;
      Endpoint endpoint;
      const HRESULT status = FindEndpoint(*GetConnection(), name_, &endpoint);
      if (status != S_OK) return status;
      return HandOut<PropertyStore>(store, GetConnection(), std::move(endpoint));
    });
  }

  HRESULT GetId(LPWSTR* id) override {
    Empty(id);
    return Call([&]() -> HRESULT {
      if (id == nullptr) return E_POINTER;
      *id = platform::TextForCaller(id_);
      return S_OK;
    });
  }

  HRESULT GetState(DWORD* state) override {
    return Call([&]() -> HRESULT {
      if (state == nullptr) return E_POINTER;
      Endpoint endpoint;
      const HRESULT status = FindEndpoint(*GetConnection(), name_, &endpoint);
      if (status != S_OK && status != AUDCLNT_E_DEVICE_INVALIDATED) return status;
      *state = status == S_OK ? endpoint.state : DEVICE_STATE_NOTPRESENT;
      return S_OK;
    });
  }

 private:
  const EndpointName name_;
  const platform::WideText id_;
};

}  // namespace

HRESULT NewDevice(const std::shared_ptr<Connection>& connection, const Endpoint& endpoint, IMMDevice** device) {
  return HandOut<Device>(device, connection, endpoint);
}

}  // namespace pulse_audio
