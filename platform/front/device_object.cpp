#include "platform/front/caller_memory.h"
#include "platform/front/object.h"
#include "platform/front/objects.h"

namespace platform {

namespace {

class PropertyStore final : public Object<IPropertyStore> {
 public:
  PropertyStore(const Context& context, EndpointState endpoint) : Object(context), endpoint_(std::move(endpoint)) {}

  HRESULT GetValue(REFPROPERTYKEY key, PROPVARIANT* value) override {
    if (value != nullptr) PropVariantInit(value);
    return Call("IPropertyStore::GetValue", {{"key", key}}, [&]() -> HRESULT {
      if (value == nullptr) return E_POINTER;
      // A key that endpoints don't have gives the empty value, as published.
      if (key == PKEY_AudioEngine_DeviceFormat) {
        value->blob = FormatBlobForCaller(endpoint_.format);
        value->vt = VT_BLOB;
      } else if (key == PKEY_Device_FriendlyName) {
        value->pwszVal = TextForCaller(endpoint_.name);
        value->vt = VT_LPWSTR;
      }
      return S_OK;
    });
  }

 private:
  const EndpointState endpoint_;
};

class Device final : public Object<IMMDevice> {
 public:
  explicit Device(const Context& context) : Object(context) {}

  HRESULT Activate(REFIID iid, DWORD, PROPVARIANT*, void** object) override {
    Empty(object);
    return Call("IMMDevice::Activate", {{"interface", iid}}, [&]() -> HRESULT {
      if (object == nullptr) return E_POINTER;
      EndpointState endpoint;
      const HRESULT status = GetBackend().Find(Key(), &endpoint);
      if (status != S_OK) return status;
      if (endpoint.state != DEVICE_STATE_ACTIVE) return AUDCLNT_E_DEVICE_INVALIDATED;
      if (iid == InterfaceId<IAudioClient>()) return NewClient(GetContext(), reinterpret_cast<IAudioClient**>(object));
      if (iid == InterfaceId<IAudioEndpointVolume>()) {
        return NewVolume(GetContext(), reinterpret_cast<IAudioEndpointVolume**>(object));
      }
      return E_NOINTERFACE;
    });
  }

  HRESULT OpenPropertyStore(DWORD access, IPropertyStore** store) override {
    Empty(store);
    return Call("IMMDevice::OpenPropertyStore", {}, [&]() -> HRESULT {
      if (store == nullptr) return E_POINTER;
      if (access != STGM_READ) return E_INVALIDARG;
      EndpointState endpoint;
      const HRESULT status = GetBackend().Find(Key(), &endpoint);
      return status == S_OK ? HandOut<PropertyStore>(store, GetContext(), std::move(endpoint)) : status;
    });
  }

  HRESULT GetId(LPWSTR* id) override {
    Empty(id);
    return Call("IMMDevice::GetId", {}, [&]() -> HRESULT {
      if (id == nullptr) return E_POINTER;
      *id = TextForCaller(GetContext().endpoint->id);
      return S_OK;
    });
  }

  HRESULT GetState(DWORD* state) override {
    return Call("IMMDevice::GetState", {}, [&]() -> HRESULT {
      if (state == nullptr) return E_POINTER;
      EndpointState endpoint;
      const HRESULT status = GetBackend().Find(Key(), &endpoint);
      if (status != S_OK && status != AUDCLNT_E_DEVICE_INVALIDATED) return status;
      *state = status == S_OK ? endpoint.state : DEVICE_STATE_NOTPRESENT;
      return S_OK;
    });
  }
};

}  // namespace

HRESULT NewDevice(const Context& context, IMMDevice** device) { return HandOut<Device>(device, context); }

}  // namespace platform
