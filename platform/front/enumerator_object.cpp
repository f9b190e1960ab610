#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "platform/front/object.h"
#include "platform/front/objects.h"

namespace platform {

namespace {

HRESULT NewDeviceOf(const Context& context, const EndpointState& endpoint, IMMDevice** device) {
  return NewDevice({context.backend, context.journal, std::make_shared<EndpointState>(endpoint)}, device);
}

class DeviceCollection final : public Object<IMMDeviceCollection> {
 public:
  DeviceCollection(const Context& context, std::vector<EndpointState> endpoints)
      : Object(context), endpoints_(std::move(endpoints)) {}

  HRESULT GetCount(UINT* count) override {
    return Call("IMMDeviceCollection::GetCount", {}, [&] { return Give(count, static_cast<UINT>(endpoints_.size())); });
  }

  HRESULT Item(UINT index, IMMDevice** device) override {
    Empty(device);
    return Call("IMMDeviceCollection::Item", {{"index", index}}, [&]() -> HRESULT {
      if (device == nullptr) return E_POINTER;
      if (index >= endpoints_.size()) return E_INVALIDARG;
      return NewDeviceOf(GetContext(), endpoints_[index], device);
    });
  }

 private:
  const std::vector<EndpointState> endpoints_;
};

class DeviceEnumerator final : public Object<IMMDeviceEnumerator> {
 public:
  explicit DeviceEnumerator(const Context& context) : Object(context) {}

  HRESULT EnumAudioEndpoints(EDataFlow flow, DWORD stateMask, IMMDeviceCollection** devices) override {
    Empty(devices);
    return Call("IMMDeviceEnumerator::EnumAudioEndpoints", {{"flow", flow}, {"stateMask", stateMask}},
                [&]() -> HRESULT {
                  if (devices == nullptr) return E_POINTER;
                  if (flow < eRender || flow > eAll || (stateMask & ~DWORD{DEVICE_STATEMASK_ALL}) != 0)
                    return E_INVALIDARG;
                  std::vector<EndpointState> endpoints;
                  const HRESULT status = GetBackend().List(&endpoints);
                  if (status != S_OK) return status;
                  std::erase_if(endpoints, [&](const EndpointState& endpoint) {
                    return (flow != eAll && endpoint.key.flow != flow) || (endpoint.state & stateMask) == 0;
                  });
                  return HandOut<DeviceCollection>(devices, GetContext(), std::move(endpoints));
                });
  }

  HRESULT GetDefaultAudioEndpoint(EDataFlow flow, ERole role, IMMDevice** device) override {
    Empty(device);
    return Call("IMMDeviceEnumerator::GetDefaultAudioEndpoint", {{"flow", flow}, {"role", role}}, [&]() -> HRESULT {
      if (device == nullptr) return E_POINTER;
      if ((flow != eRender && flow != eCapture) || role < eConsole || role > eCommunications) return E_INVALIDARG;
      return Find(device, [&](const EndpointState& endpoint) {
        const std::vector<ERole>& roles = endpoint.defaultRoles;
        return endpoint.key.flow == flow && std::find(roles.begin(), roles.end(), role) != roles.end();
      });
    });
  }

  HRESULT GetDevice(LPCWSTR id, IMMDevice** device) override {
    Empty(device);
    return Call("IMMDeviceEnumerator::GetDevice", {}, [&]() -> HRESULT {
      if (id == nullptr || device == nullptr) return E_POINTER;
      return Find(device, [&](const EndpointState& endpoint) { return endpoint.id == core_audio::TextFrom(id); });
    });
  }

 private:
  template <class Condition>
  HRESULT Find(IMMDevice** device, Condition condition) const {
    std::vector<EndpointState> endpoints;
    const HRESULT status = GetBackend().List(&endpoints);
    if (status != S_OK) return status;
    const auto found = std::find_if(endpoints.begin(), endpoints.end(), condition);
    return found == endpoints.end() ? E_NOTFOUND : NewDeviceOf(GetContext(), *found, device);
  }
};

}  // namespace

HRESULT NewEnumerator(const Context& context, IMMDeviceEnumerator** enumerator) {
  return HandOut<DeviceEnumerator>(enumerator, context);
}

}  // namespace platform
