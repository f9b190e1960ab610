#include "platform/pulse/device_enumerator.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "platform/pulse/device.h"
#include "platform/pulse/endpoint.h"
#include "platform/pulse/object.h"

namespace pulse_audio {

namespace {

class DeviceCollection final : public Object<IMMDeviceCollection> {
 public:
  DeviceCollection(const std::shared_ptr<Connection>& connection, std::vector<Endpoint> endpoints)
      : Object(connection), endpoints_(std::move(endpoints)) {}

  HRESULT GetCount(UINT* count) override {
    if (count == nullptr) return E_POINTER;
    *count = static_cast<UINT>(endpoints_.size());
    return S_OK;
  }

  HRESULT Item(UINT index, IMMDevice** device) override {
    Empty(device);
    return Call([&]() -> HRESULT {
      if (device == nullptr) return E_POINTER;
      if (index >= endpoints_.size()) return E_INVALIDARG;
      return NewDevice(GetConnection(), endpoints_[index], device);
    });
  }

 private:
  const std::vector<Endpoint> endpoints_;
};

class DeviceEnumerator final : public Object<IMMDeviceEnumerator> {
 public:
  explicit DeviceEnumerator(const std::shared_ptr<Connection>& connection) : Object(connection) {}

  HRESULT EnumAudioEndpoints(EDataFlow flow, DWORD stateMask, IMMDeviceCollection** devices) override {
    Empty(devices);
    return Call([&]() -> HRESULT {
      if (devices == nullptr) return E_POINTER;
      if (flow < eRender || flow > eAll || (stateMask & ~DWORD{DEVICE_STATEMASK_ALL}) != 0) return E_INVALIDARG;
      std::vector<Endpoint> endpoints;
      const HRESULT status = ListEndpoints(*GetConnection(), &endpoints);
      if (status != S_OK) return status;
      std::erase_if(endpoints, [&](const Endpoint& endpoint) {
        return (flow != eAll && endpoint.flow != flow) || (endpoint.state & stateMask) == 0;
      });
      return HandOut<DeviceCollection>(devices, GetConnection(), std::move(endpoints));
    });
  }

  HRESULT GetDefaultAudioEndpoint(EDataFlow flow, ERole role, IMMDevice** device) override {
    Empty(device);
    return Call([&]() -> HRESULT {
      if (device == nullptr) return E_POINTER;
      if ((flow != eRender && flow != eCapture) || role < eConsole || role > eCommunications) return E_INVALIDARG;
      // The server knows of no roles: its default is that of all.
      return Find(device,
                  [flow](const Endpoint& endpoint) { return endpoint.flow == flow && !endpoint.defaultRoles.empty(); });
    });
  }

  HRESULT GetDevice(LPCWSTR id, IMMDevice** device) override {
    Empty(device);
    return Call([&]() -> HRESULT {
      if (id == nullptr || device == nullptr) return E_POINTER;
      return Find(device, [id](const Endpoint& endpoint) { return endpoint.id == id; });
    });
  }

 private:
  template <class Condition>
  HRESULT Find(IMMDevice** device, Condition condition) const {
    std::vector<Endpoint> endpoints;
    const HRESULT status = ListEndpoints(*GetConnection(), &endpoints);
    if (status != S_OK) return status;
    const auto found = std::find_if(endpoints.begin(), endpoints.end(), condition);
    return found == endpoints.end() ? E_NOTFOUND : NewDevice(GetConnection(), *found, device);
  }
};

}  // namespace

HRESULT NewDeviceEnumerator(const std::shared_ptr<Connection>& connection, IMMDeviceEnumerator** enumerator) {
  return HandOut<DeviceEnumerator>(enumerator, connection);
}

}  // namespace pulse_audio
