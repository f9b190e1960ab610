#include "host/endpoints/endpoints.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <utility>

#include "host/base/failure.h"
#include "host/endpoints/endpoint_volume.h"
#include "platform/com_memory.h"
#include "platform/com_ptr.h"
#include "platform/core_audio.h"
#include "text/utf.h"

namespace host {
namespace {

constexpr DWORD kEveryState =
    DEVICE_STATE_ACTIVE | DEVICE_STATE_DISABLED | DEVICE_STATE_NOTPRESENT | DEVICE_STATE_UNPLUGGED;

class PropertyValue {
 public:
  PropertyValue() { PropVariantInit(&value_); }
  PropertyValue(const PropertyValue&) = delete;
  PropertyValue& operator=(const PropertyValue&) = delete;
  ~PropertyValue() { PropVariantClear(&value_); }
  PROPVARIANT* Receive() { return &value_; }
  const PROPVARIANT* operator->() const { return &value_; }

 private:
  PROPVARIANT value_;
};

void Require(HRESULT status, const char* operation) {
  if (SUCCEEDED(status)) return;
  throw Failure(ExitCode::kBroken,
                fmt::format("The audio system won't list its endpoints: {} gave 0x{:08X}.", operation,
                            static_cast<std::uint32_t>(status)),
                "Check that the system's audio service runs.");
}

std::string IdOf(IMMDevice& device) {
  LPWSTR id = nullptr;
  Require(device.GetId(&id), "IMMDevice::GetId");
  const CoTaskMemory<WCHAR> owned(id);
  return text::ToUtf8(core_audio::TextFrom(id));
}

EndpointState StateOf(IMMDevice& device) {
  DWORD state = 0;
  Require(device.GetState(&state), "IMMDevice::GetState");
  switch (state) {
    case DEVICE_STATE_ACTIVE:
      return EndpointState::kActive;
    case DEVICE_STATE_DISABLED:
      return EndpointState::kDisabled;
    case DEVICE_STATE_UNPLUGGED:
      return EndpointState::kUnplugged;
    default:
      return EndpointState::kNotPresent;
  }
}

// A wave format header, and behind it, when the tag says so, its extension, whose GUID begins with the tag that it
// stands for ("Converting Between Format Tags and Subformat GUIDs" in the Windows documentation).
std::optional<DeviceFormat> FormatFrom(const BYTE* bytes, std::size_t size) {
  WAVEFORMATEX format;
  if (bytes == nullptr || size < sizeof format) return std::nullopt;
  std::memcpy(&format, bytes, sizeof format);
  constexpr std::size_t kSubFormatOffset = 24;
  std::uint32_t tag = format.wFormatTag;
  if (tag == WAVE_FORMAT_EXTENSIBLE && size >= kSubFormatOffset + sizeof tag) {
    std::memcpy(&tag, bytes + kSubFormatOffset, sizeof tag);
  }
  return DeviceFormat{.channels = format.nChannels,
                      .rate = format.nSamplesPerSec,
                      .bits = format.wBitsPerSample,
                      .encoding = tag == WAVE_FORMAT_PCM ? "pcm" : (tag == WAVE_FORMAT_IEEE_FLOAT ? "float" : "other")};
}

void ReadProperties(IMMDevice& device, Endpoint& endpoint) {
  ComPtr<IPropertyStore> store;
  if (FAILED(device.OpenPropertyStore(STGM_READ, store.Receive()))) return;
  PropertyValue name, format;
  if (SUCCEEDED(store->GetValue(PKEY_Device_FriendlyName, name.Receive())) && name->vt == VT_LPWSTR) {
    endpoint.name = text::ToUtf8(core_audio::TextFrom(name->pwszVal));
  }
  if (SUCCEEDED(store->GetValue(PKEY_AudioEngine_DeviceFormat, format.Receive())) && format->vt == VT_BLOB) {
    endpoint.format = FormatFrom(format->blob.pBlobData, format->blob.cbSize);
  }
}

Endpoint ReadEndpoint(IMMDevice& device, Flow flow) {
  Endpoint endpoint;
  endpoint.id = IdOf(device);
  endpoint.flow = flow;
  endpoint.state = StateOf(device);
  ReadProperties(device, endpoint);
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
    if (FAILED(enumerator.GetDefaultAudioEndpoint(flow, role, device.Receive()))) continue;
    const std::string id = IdOf(*device.Get());
    const auto found = std::find_if(endpoints.begin(), endpoints.end(), [&](const Endpoint& e) { return e.id == id; });
    if (found != endpoints.end()) found->defaultFor.emplace_back(word);
  }
}

std::vector<Endpoint> ReadFlow(IMMDeviceEnumerator& enumerator, Flow flow) {
  const EDataFlow dataFlow = flow == Flow::kRender ? eRender : eCapture;
  ComPtr<IMMDeviceCollection> devices;
  Require(enumerator.EnumAudioEndpoints(dataFlow, kEveryState, devices.Receive()),
          "IMMDeviceEnumerator::EnumAudioEndpoints");
  UINT count = 0;
  Require(devices->GetCount(&count), "IMMDeviceCollection::GetCount");
  std::vector<Endpoint> endpoints;
  for (UINT index = 0; index < count; ++index) {
    ComPtr<IMMDevice> device;
    Require(devices->Item(index, device.Receive()), "IMMDeviceCollection::Item");
    endpoints.push_back(ReadEndpoint(*device.Get(), flow));
  }
  MarkDefaults(enumerator, dataFlow, endpoints);
  return endpoints;
}

}  // namespace

const char* FlowWord(Flow flow) {
  return flow == Flow::kRender ? "render" : "capture";
}

const char* StateWord(EndpointState state) {
  switch (state) {
    case EndpointState::kActive:
      return "active";
    case EndpointState::kDisabled:
      return "disabled";
    case EndpointState::kUnplugged:
      return "unplugged";
    case EndpointState::kNotPresent:
      break;
  }
  return "notpresent";
}

std::vector<Endpoint> ReadEndpoints() {
  ComPtr<IMMDeviceEnumerator> enumerator;
  Require(CoCreateInstance(core_audio::EnumeratorClass(), nullptr, CLSCTX_ALL,
                           core_audio::InterfaceId<IMMDeviceEnumerator>(), enumerator.ReceiveAny()),
          "CoCreateInstance");
  std::vector<Endpoint> endpoints = ReadFlow(*enumerator.Get(), Flow::kRender);
  for (Endpoint& endpoint : ReadFlow(*enumerator.Get(), Flow::kCapture)) endpoints.push_back(std::move(endpoint));
  return endpoints;
}

}  // namespace host
