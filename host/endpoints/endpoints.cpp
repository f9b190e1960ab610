#include "host/endpoints/endpoints.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <utility>

#include "host/base/failure.h"
#include "host/endpoints/device_properties.h"
#include "host/endpoints/endpoint_volume.h"
#include "host/endpoints/handed_out.h"
#include "platform/com_ptr.h"
#include "platform/core_audio.h"

namespace host {
namespace {

constexpr DWORD kEveryState =
    DEVICE_STATE_ACTIVE | DEVICE_STATE_DISABLED | DEVICE_STATE_NOTPRESENT | DEVICE_STATE_UNPLUGGED;

void Require(HRESULT status, const char* operation) {
  if (SUCCEEDED(status)) return;
  throw Failure(ExitCode::kBroken,
                fmt::format("The audio system won't list its endpoints: {} gave 0x{:08X}.", operation,
                            static_cast<std::uint32_t>(status)),
                "Check that the system's audio service runs. '--platform virtual' simulates one.");
}

EndpointState StateOf(IMMDevice& device) {
  DWORD state = 0;
  Require(device.GetState(&state), "IMMDevice::GetState");
  switch (state) {
    case DEVICE_STATE_ACTIVE: return EndpointState::kActive;
    case DEVICE_STATE_DISABLED: return EndpointState::kDisabled;
    case DEVICE_STATE_UNPLUGGED: return EndpointState::kUnplugged;
    default: return EndpointState::kNotPresent;
  }
}

Endpoint ReadEndpoint(IMMDevice& device, Flow flow) {
  Endpoint endpoint;
  Require(ReadDeviceId(device, endpoint.id), "IMMDevice::GetId");
  endpoint.flow = flow;
  endpoint.state = StateOf(device);
  const DeviceProperties properties(device);
  endpoint.name = properties.Name();
  endpoint.format = properties.Format();
  if (endpoint.state == EndpointState::kActive) {
    const EndpointVolume volume(device);
    endpoint.muted = volume.Muted();
    endpoint.levels = volume.Levels();
  }
  return endpoint;
}

void MarkDefaults(IMMDeviceEnumerator& enumerator, EDataFlow flow, std::vector<Endpoint>& endpoints) {
  static constexpr std::array<std::pair<ERole, const char*>, 3> kRoles = {
      {{eConsole, "console"}, {eMultimedia, "multimedia"}, {eCommunications, "communications"}}};
  for (const auto& [role, word] : kRoles) {
    ComPtr<IMMDevice> device;
    // A system without a default of some role is an ordinary one.
    if (FAILED(StatusWith(enumerator.GetDefaultAudioEndpoint(flow, role, device.Receive()), device))) continue;
    std::string id;
    Require(ReadDeviceId(*device.Get(), id), "IMMDevice::GetId");
    const auto found = std::find_if(endpoints.begin(), endpoints.end(), [&](const Endpoint& e) { return e.id == id; });
    if (found != endpoints.end()) found->defaultFor.emplace_back(word);
  }
}

std::vector<Endpoint> ReadFlow(IMMDeviceEnumerator& enumerator, Flow flow) {
  const EDataFlow dataFlow = flow == Flow::kRender ? eRender : eCapture;
  ComPtr<IMMDeviceCollection> devices;
  Require(StatusWith(enumerator.EnumAudioEndpoints(dataFlow, kEveryState, devices.Receive()), devices),
          "IMMDeviceEnumerator::EnumAudioEndpoints");
  UINT count = 0;
  Require(devices->GetCount(&count), "IMMDeviceCollection::GetCount");
  std::vector<Endpoint> endpoints;
  for (UINT index = 0; index < count; ++index) {
    ComPtr<IMMDevice> device;
    Require(StatusWith(devices->Item(index, device.Receive()), device), "IMMDeviceCollection::Item");
    endpoints.push_back(ReadEndpoint(*device.Get(), flow));
  }
  MarkDefaults(enumerator, dataFlow, endpoints);
  return endpoints;
}

}  // namespace

const char* Word(Flow flow) { return flow == Flow::kRender ? "render" : "capture"; }

const char* Word(EndpointState state) {
  static constexpr const char* kWords[] = {"active", "disabled", "notpresent", "unplugged"};
  return kWords[static_cast<std::size_t>(state)];
}

bool IsDefaultFor(const Endpoint& endpoint, const std::string& role) {
  return std::find(endpoint.defaultFor.begin(), endpoint.defaultFor.end(), role) != endpoint.defaultFor.end();
}

std::string LevelsText(const std::vector<float>& levels) {
  std::vector<std::string> texts;
  for (const float level : levels) texts.push_back(fmt::format("{} %", std::lround(level * 100)));
  return fmt::format("{}", fmt::join(texts, " "));
}

std::vector<Endpoint> ReadEndpoints() {
  ComPtr<IMMDeviceEnumerator> enumerator;
  Require(StatusWith(CoCreateInstance(core_audio::ObserverEnumeratorClass(), nullptr, CLSCTX_ALL,
                                      core_audio::InterfaceId<IMMDeviceEnumerator>(), enumerator.ReceiveAny()),
                     enumerator),
          "CoCreateInstance");
  std::vector<Endpoint> endpoints = ReadFlow(*enumerator.Get(), Flow::kRender);
  for (Endpoint& endpoint : ReadFlow(*enumerator.Get(), Flow::kCapture)) endpoints.push_back(std::move(endpoint));
  return endpoints;
}

}  // namespace host
