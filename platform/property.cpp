#include "platform/property.h"

#include "platform/caller_memory.h"

namespace platform {

HRESULT GetProperty(const EndpointState& endpoint, REFPROPERTYKEY key, PROPVARIANT* value) {
  if (value == nullptr) return E_POINTER;
  if (key == PKEY_AudioEngine_DeviceFormat) {
    const WAVEFORMATEXTENSIBLE wave = endpoint.format.ToWaveFormat();
    const std::size_t bytes = WaveFormatBytes(wave);
    value->blob.pBlobData = static_cast<BYTE*>(BytesForCaller(&wave, bytes));
    value->blob.cbSize = static_cast<ULONG>(bytes);
    value->vt = VT_BLOB;
  } else if (key == PKEY_Device_FriendlyName) {
    value->pwszVal = TextForCaller(endpoint.name);
    value->vt = VT_LPWSTR;
  }
  return S_OK;
}

HRESULT ReleaseProperty(PROPVARIANT* value) {
  if (value == nullptr) return S_OK;
  switch (value->vt) {
    case VT_EMPTY:
      break;
    case VT_LPWSTR:
      CoTaskMemFree(value->pwszVal);
      break;
    case VT_BLOB:
      CoTaskMemFree(value->blob.pBlobData);
      break;
    default:
      return E_INVALIDARG;
  }
  PropVariantInit(value);
  return S_OK;
}

}  // namespace platform
