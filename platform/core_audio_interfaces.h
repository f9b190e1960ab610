// The interfaces of Core Audio that this project uses, with the operations that it uses, for systems that don't have them.
// Include platform/core_audio.h instead, which has them everywhere.
#pragma once

#include "platform/core_audio_types.h"

namespace core_audio {

struct IUnknown {
  virtual HRESULT QueryInterface(REFIID interface, void** object) = 0;
  virtual ULONG AddRef() = 0;
  virtual ULONG Release() = 0;

 protected:
  ~IUnknown() = default;
};

struct IPropertyStore : IUnknown {
  virtual HRESULT GetValue(REFPROPERTYKEY key, PROPVARIANT* value) = 0;
};

struct IMMDevice : IUnknown {
  virtual HRESULT Activate(REFIID interface, DWORD context, PROPVARIANT* parameters, void** object) = 0;
  virtual HRESULT OpenPropertyStore(DWORD access, IPropertyStore** store) = 0;
  virtual HRESULT GetId(LPWSTR* id) = 0;
  virtual HRESULT GetState(DWORD* state) = 0;
};

struct IMMDeviceCollection : IUnknown {
  virtual HRESULT GetCount(UINT* count) = 0;
  virtual HRESULT Item(UINT index, IMMDevice** device) = 0;
};

struct IMMDeviceEnumerator : IUnknown {
  virtual HRESULT EnumAudioEndpoints(EDataFlow flow, DWORD stateMask, IMMDeviceCollection** devices) = 0;
  virtual HRESULT GetDefaultAudioEndpoint(EDataFlow flow, ERole role, IMMDevice** device) = 0;
  virtual HRESULT GetDevice(LPCWSTR id, IMMDevice** device) = 0;
};

struct IAudioClient : IUnknown {
  virtual HRESULT Initialize(AUDCLNT_SHAREMODE shareMode, DWORD flags, REFERENCE_TIME bufferDuration,
                             REFERENCE_TIME periodicity, const WAVEFORMATEX* format, const GUID* session) = 0;
  virtual HRESULT GetBufferSize(UINT32* frames) = 0;
  virtual HRESULT GetCurrentPadding(UINT32* frames) = 0;
  virtual HRESULT IsFormatSupported(AUDCLNT_SHAREMODE shareMode, const WAVEFORMATEX* format,
                                    WAVEFORMATEX** closestMatch) = 0;
  virtual HRESULT Start() = 0;
  virtual HRESULT Stop() = 0;
  virtual HRESULT GetService(REFIID interface, void** service) = 0;
};

struct IAudioRenderClient : IUnknown {
  virtual HRESULT GetBuffer(UINT32 frames, BYTE** data) = 0;
  virtual HRESULT ReleaseBuffer(UINT32 frames, DWORD flags) = 0;
};

struct IAudioCaptureClient : IUnknown {
  virtual HRESULT GetBuffer(BYTE** data, UINT32* frames, DWORD* flags, UINT64* devicePosition,
                            UINT64* performanceCounter) = 0;
  virtual HRESULT ReleaseBuffer(UINT32 frames) = 0;
  virtual HRESULT GetNextPacketSize(UINT32* frames) = 0;
};

// Levels are scalars from 0.0 to 1.0 on the endpoint's own taper.
struct IAudioEndpointVolume : IUnknown {
  virtual HRESULT GetChannelCount(UINT* count) = 0;
  virtual HRESULT SetChannelVolumeLevelScalar(UINT channel, float level, const GUID* eventContext) = 0;
  virtual HRESULT GetChannelVolumeLevelScalar(UINT channel, float* level) = 0;
  virtual HRESULT SetMute(BOOL muted, const GUID* eventContext) = 0;
  virtual HRESULT GetMute(BOOL* muted) = 0;
};

// The published identifier of an interface.
template <class Interface>
const IID& InterfaceId();

#define CORE_AUDIO_INTERFACE_ID(Interface, ...)       \
  inline constexpr IID IID_##Interface = __VA_ARGS__; \
  template <>                                         \
  inline const IID& InterfaceId<Interface>() {        \
    return IID_##Interface;                           \
  }
CORE_AUDIO_INTERFACE_ID(IUnknown, {0x00000000, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}})
CORE_AUDIO_INTERFACE_ID(IPropertyStore, {0x886D8EEB, 0x8CF2, 0x4446, {0x8D, 0x02, 0xCD, 0xBA, 0x1D, 0xBD, 0xCF, 0x99}})
CORE_AUDIO_INTERFACE_ID(IMMDevice, {0xD666063F, 0x1587, 0x4E43, {0x81, 0xF1, 0xB9, 0x48, 0xE8, 0x07, 0x36, 0x3F}})
CORE_AUDIO_INTERFACE_ID(IMMDeviceCollection,
                        {0x0BD7A1BE, 0x7A1A, 0x44DB, {0x83, 0x97, 0xCC, 0x53, 0x92, 0x38, 0x7B, 0x5E}})
CORE_AUDIO_INTERFACE_ID(IMMDeviceEnumerator,
                        {0xA95664D2, 0x9614, 0x4F35, {0xA7, 0x46, 0xDE, 0x8D, 0xB6, 0x36, 0x17, 0xE6}})
CORE_AUDIO_INTERFACE_ID(IAudioClient, {0x1CB9AD4C, 0xDBFA, 0x4C32, {0xB1, 0x78, 0xC2, 0xF5, 0x68, 0xA7, 0x03, 0xB2}})
CORE_AUDIO_INTERFACE_ID(IAudioRenderClient,
                        {0xF294ACFC, 0x3146, 0x4483, {0xA7, 0xBF, 0xAD, 0xDC, 0xA7, 0xC2, 0x60, 0xE2}})
CORE_AUDIO_INTERFACE_ID(IAudioCaptureClient,
                        {0xC8ADBD64, 0xE71E, 0x48A0, {0xA4, 0xDE, 0x18, 0x5C, 0x39, 0x5C, 0xD3, 0x17}})
CORE_AUDIO_INTERFACE_ID(IAudioEndpointVolume,
                        {0x5CDF2C82, 0x841E, 0x4546, {0x97, 0x22, 0x0C, 0xF7, 0x40, 0x78, 0x22, 0x9A}})
#undef CORE_AUDIO_INTERFACE_ID

}  // namespace core_audio
