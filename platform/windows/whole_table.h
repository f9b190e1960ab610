// The operations of the system's interfaces that the front has no use for: each says so.
#pragma once

#include "platform/core_audio.h"

namespace platform {

// An interface whose whole table is there, but for the operations that core_audio.h has elsewhere than on Windows.
template <class Interface>
struct WholeTable : Interface {};

template <>
struct WholeTable<IPropertyStore> : IPropertyStore {
  HRESULT STDMETHODCALLTYPE GetCount(DWORD*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetAt(DWORD, PROPERTYKEY*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetValue(REFPROPERTYKEY, REFPROPVARIANT) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Commit() override { return E_NOTIMPL; }
};

template <>
struct WholeTable<IMMDeviceEnumerator> : IMMDeviceEnumerator {
  HRESULT STDMETHODCALLTYPE RegisterEndpointNotificationCallback(IMMNotificationClient*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE UnregisterEndpointNotificationCallback(IMMNotificationClient*) override {
    return E_NOTIMPL;
  }
};

template <>
struct WholeTable<IAudioClient> : IAudioClient {
  HRESULT STDMETHODCALLTYPE GetStreamLatency(REFERENCE_TIME*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetMixFormat(WAVEFORMATEX**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetDevicePeriod(REFERENCE_TIME*, REFERENCE_TIME*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Reset() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetEventHandle(HANDLE) override { return E_NOTIMPL; }
};

template <>
struct WholeTable<IAudioEndpointVolume> : IAudioEndpointVolume {
  HRESULT STDMETHODCALLTYPE RegisterControlChangeNotify(IAudioEndpointVolumeCallback*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE UnregisterControlChangeNotify(IAudioEndpointVolumeCallback*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetMasterVolumeLevel(float, const GUID*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetMasterVolumeLevelScalar(float, const GUID*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetMasterVolumeLevel(float*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetMasterVolumeLevelScalar(float*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetChannelVolumeLevel(UINT, float, const GUID*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetChannelVolumeLevel(UINT, float*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetVolumeStepInfo(UINT*, UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE VolumeStepUp(const GUID*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE VolumeStepDown(const GUID*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE QueryHardwareSupport(DWORD*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetVolumeRange(float*, float*, float*) override { return E_NOTIMPL; }
};

}  // namespace platform
