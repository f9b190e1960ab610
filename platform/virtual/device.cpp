#include "platform/virtual/device.h"

#include "platform/caller_memory.h"
#include "platform/property.h"
#include "platform/virtual/audio_client.h"
#include "platform/virtual/endpoint_volume.h"
#include "platform/virtual/object.h"

namespace virtual_audio {

namespace {

class PropertyStore final : public Object<IPropertyStore> {
 public:
  PropertyStore(const std::shared_ptr<Machine>& machine, Endpoint& endpoint) : Object(machine, &endpoint) {}

  HRESULT GetValue(REFPROPERTYKEY key, PROPVARIANT* value) override {
    if (value != nullptr) PropVariantInit(value);
    return Call("IPropertyStore::GetValue", {{"key", key}},
                [&] { return platform::GetProperty(GetEndpoint(), key, value); });
  }
};

class Device final : public Object<IMMDevice> {
 public:
  Device(const std::shared_ptr<Machine>& machine, Endpoint& endpoint) : Object(machine, &endpoint) {}

  HRESULT Activate(REFIID iid, DWORD, PROPVARIANT*, void** object) override {
    Empty(object);
    return Call("IMMDevice::Activate", {{"interface", iid}}, [&]() -> HRESULT {
      if (object == nullptr) return E_POINTER;
      if (GetEndpoint().state != DEVICE_STATE_ACTIVE) return AUDCLNT_E_DEVICE_INVALIDATED;
      if (iid == InterfaceId<IAudioClient>()) {
        return NewAudioClient(GetMachine(), GetEndpoint(), reinterpret_cast<IAudioClient**>(object));
      }
      if (iid == InterfaceId<IAudioEndpointVolume>()) {
        return NewEndpointVolume(GetMachine(), GetEndpoint(), reinterpret_cast<IAudioEndpointVolume**>(object));
      }
      return E_NOINTERFACE;
    });
  }

  HRESULT OpenPropertyStore(DWORD access, IPropertyStore** store) override {
    Empty(store);
    return Call("IMMDevice::OpenPropertyStore", {}, [&]() -> HRESULT {
      if (store == nullptr) return E_POINTER;
      if (access != STGM_READ) return E_INVALIDARG;
      return HandOut<PropertyStore>(store, GetMachine(), GetEndpoint());
    });
  }

  HRESULT GetId(LPWSTR* id) override {
    Empty(id);
    return Call("IMMDevice::GetId", {}, [&]() -> HRESULT {
      if (id == nullptr) return E_POINTER;
      *id = platform::TextForCaller(GetEndpoint().id);
      return S_OK;
    });
  }

  HRESULT GetState(DWORD* state) override {
    return Call("IMMDevice::GetState", {}, [&]() -> HRESULT {
      if (state == nullptr) return E_POINTER;
      *state = GetEndpoint().state;
      return S_OK;
    });
  }
};

}  // namespace

HRESULT NewDevice(const std::shared_ptr<Machine>& machine, Endpoint& endpoint, IMMDevice** device) {
  return HandOut<Device>(device, machine, endpoint);
}

}  // namespace virtual_audio
