#include "host/endpoints/device_properties.h"

#include <algorithm>
#include <cstring>

#include "host/endpoints/handed_out.h"
#include "platform/com_memory.h"
#include "text/utf.h"

namespace host {
namespace {

// One property; of the type VT_EMPTY when the system doesn't tell it.
class PropertyValue {
 public:
  PropertyValue(IPropertyStore* store, const PROPERTYKEY& key) {
    PropVariantInit(&value_);
    if (store != nullptr && FAILED(store->GetValue(key, &value_))) value_.vt = VT_EMPTY;
  }
  PropertyValue(const PropertyValue&) = delete;
  PropertyValue& operator=(const PropertyValue&) = delete;
  // What an observer is given it releases without PropVariantClear, which is traced.
  ~PropertyValue() {
    if (value_.vt == VT_LPWSTR) CoTaskMemFree(value_.pwszVal);
    if (value_.vt == VT_BLOB) CoTaskMemFree(value_.blob.pBlobData);
  }
  const PROPVARIANT* operator->() const { return &value_; }

 private:
  PROPVARIANT value_;
};

}  // namespace

HRESULT ReadDeviceId(IMMDevice& device, std::string& id) {
  LPWSTR text = nullptr;
  const HRESULT given = device.GetId(&text);
  const CoTaskMemory<WCHAR> owned(text);
  const HRESULT status = StatusWith(given, owned);
  if (SUCCEEDED(status)) id = text::ToUtf8(core_audio::TextFrom(text));
  return status;
}

DeviceProperties::DeviceProperties(IMMDevice& device) {
  if (FAILED(device.OpenPropertyStore(STGM_READ, store_.Receive()))) store_.Reset();
}

std::string DeviceProperties::Name() const {
  const PropertyValue name(store_.Get(), PKEY_Device_FriendlyName);
  return name->vt == VT_LPWSTR ? text::ToUtf8(core_audio::TextFrom(name->pwszVal)) : "";
}

std::optional<platform::SampleFormat> DeviceProperties::Format() const {
  const PropertyValue format(store_.Get(), PKEY_AudioEngine_DeviceFormat);
  if (format->vt != VT_BLOB || format->blob.cbSize < sizeof(WAVEFORMATEX)) return std::nullopt;
  // A copy: the bytes needn't be aligned, and can be fewer than the header claims.
  WAVEFORMATEXTENSIBLE wave{};
  std::memcpy(&wave, format->blob.pBlobData, std::min<std::size_t>(format->blob.cbSize, sizeof wave));
  if (format->blob.cbSize < sizeof(WAVEFORMATEX) + wave.Format.cbSize) return std::nullopt;
  return platform::SampleFormat::From(wave.Format);
}

}  // namespace host
