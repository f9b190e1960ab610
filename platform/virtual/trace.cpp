#include "platform/virtual/trace.h"

#include <cstdio>

namespace virtual_audio {

namespace {

struct InterfaceName {
  const IID& iid;
  const char* name;
};

std::string TextOf(const GUID& id) {
  char text[40];
  const std::uint8_t* rest = id.Data4;
  std::snprintf(text, sizeof text, "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}",
                static_cast<unsigned>(id.Data1), id.Data2, id.Data3, rest[0], rest[1], rest[2], rest[3], rest[4],
                rest[5], rest[6], rest[7]);
  return text;
}

}  // namespace

std::string NameOf(const IID& iid) {
  const InterfaceName known[] = {
      {InterfaceId<IUnknown>(), "IUnknown"},
      {InterfaceId<IMMDeviceEnumerator>(), "IMMDeviceEnumerator"},
      {InterfaceId<IAudioClient>(), "IAudioClient"},
      {InterfaceId<IAudioRenderClient>(), "IAudioRenderClient"},
      {InterfaceId<IAudioCaptureClient>(), "IAudioCaptureClient"},
      {InterfaceId<IAudioEndpointVolume>(), "IAudioEndpointVolume"},
  };
  for (const InterfaceName& one : known) {
    if (one.iid == iid) return one.name;
  }
  return TextOf(iid);
}

std::string NameOf(const PROPERTYKEY& key) {
  if (key == PKEY_AudioEngine_DeviceFormat) return "PKEY_AudioEngine_DeviceFormat";
  if (key == PKEY_Device_FriendlyName) return "PKEY_Device_FriendlyName";
  return TextOf(key.fmtid) + ' ' + std::to_string(key.pid);
}

}  // namespace virtual_audio
