#include "platform/virtual/device_enumerator.h"

#include <algorithm>
#include <vector>

#include "platform/virtual/device.h"
#include "platform/virtual/object.h"

namespace virtual_audio {

namespace {

class DeviceCollection final : public Object<IMMDeviceCollection> {
 public:
  DeviceCollection(const std::shared_ptr<Machine>& machine, std::vector<Endpoint*> endpoints)
      : Object(machine), endpoints_(std::move(endpoints)) {}

  HRESULT GetCount(UINT* count) override {
    return Call("IMMDeviceCollection::GetCount", {}, [&]() -> HRESULT {
      if (count == nullptr) return E_POINTER;
      *count = static_cast<UINT>(endpoints_.size());
      return S_OK;
    });
  }

  HRESULT Item(UINT index, IMMDevice** device) override {
    Empty(device);
    return Call("IMMDeviceCollection::Item", {{"index", index}}, [&]() -> HRESULT {
      if (device == nullptr) return E_POINTER;
      if (index >= endpoints_.size()) return E_INVALIDARG;
      return NewDevice(GetMachine(), *endpoints_[index], device);
    });
  }

 private:
  std::vector<Endpoint*> endpoints_;
};

class DeviceEnumerator final : public Object<IMMDeviceEnumerator> {
 public:
  explicit DeviceEnumerator(const std::shared_ptr<Machine>& machine) : Object(machine) {}

  HRESULT EnumAudioEndpoints(EDataFlow flow, DWORD stateMask, IMMDeviceCollection** devices) override {
    Empty(devices);
    return Call("IMMDeviceEnumerator::EnumAudioEndpoints", {{"flow", flow}, {"stateMask", stateMask}},
                [&]() -> HRESULT {
                  if (devices == nullptr) return E_POINTER;
                  if (flow < eRender || flow > eAll || (stateMask & ~DWORD{DEVICE_STATEMASK_ALL}) != 0)
                    return E_INVALIDARG;
                  std::vector<Endpoint*> found;
                  for (Endpoint& endpoint : GetMachine()->Endpoints()) {
                    if ((flow == eAll || endpoint.flow == flow) && (endpoint.state & stateMask) != 0)
                      found.push_back(&endpoint);
                  }
                  return HandOut<DeviceCollection>(devices, GetMachine(), std::move(found));
                });
  }

  HRESULT GetDefaultAudioEndpoint(EDataFlow flow, ERole role, IMMDevice** device) override {
    Empty(device);
    return Call("IMMDeviceEnumerator::GetDefaultAudioEndpoint", {{"flow", flow}, {"role", role}}, [&]() -> HRESULT {
      if (device == nullptr) return E_POINTER;
      if ((flow != eRender && flow != eCapture) || role < eConsole || role > eCommunications) return E_INVALIDARG;
      return Find(device, [&](const Endpoint& endpoint) {
        return endpoint.flow == flow && std::find(endpoint.defaultRoles.begin(), endpoint.defaultRoles.end(), role) !=
                                            endpoint.defaultRoles.end();
      });
    });
  }

  HRESULT GetDevice(LPCWSTR id, IMMDevice** device) override {
    Empty(device);
    return Call("IMMDeviceEnumerator::GetDevice", {}, [&]() -> HRESULT {
      if (id == nullptr || device == nullptr) return E_POINTER;
      return Find(device, [id](const Endpoint& endpoint) { return endpoint.id == id; });
    });
  }

 private:
  template <class Condition>
  HRESULT Find(IMMDevice** device, Condition condition) const {
    std::vector<Endpoint>& endpoints = GetMachine()->Endpoints();
    const auto found = std::find_if(endpoints.begin(), endpoints.end(), condition);
    return found == endpoints.end() ? E_NOTFOUND : NewDevice(GetMachine(), *found, device);
  }
};

}  // namespace

HRESULT NewDeviceEnumerator(const std::shared_ptr<Machine>& machine, IMMDeviceEnumerator** enumerator) {
  return HandOut<DeviceEnumerator>(enumerator, machine);
}

}  // namespace virtual_audio
