// The Core Audio operations that the module, its host and the virtual machine use.
//
// On Windows this is the system's own Core Audio. Elsewhere the same interfaces, statuses and structures are declared
// here, written from their published descriptions, and libaudioplatform implements them; only what this project uses is
// declared. Names, values and meanings are those of the Windows documentation ("Core Audio APIs", "Component Object
// Model").
//
// Rules that hold on both: every operation gives a status, S_OK (0) for success; a reference that an operation hands
// out belongs to the caller, who ends it with Release; text and memory handed out are released with CoTaskMemFree, a
// PROPVARIANT with PropVariantClear. Objects are used on the thread that got them.
#pragma once

#include <string>

#ifdef _WIN32

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
// The property headers need the Windows types above.
#include <audioclient.h>
#include <endpointvolume.h>
#include <functiondiscoverykeys_devpkey.h>
#include <ks.h>
#include <ksmedia.h>
#include <mmdeviceapi.h>
#include <propidl.h>
#include <propsys.h>

namespace core_audio {

template <class Interface>
const IID& InterfaceId() {
  return __uuidof(Interface);
}

// The class of the device enumerator. Not every toolchain's libraries define the name CLSID_MMDeviceEnumerator.
inline const CLSID& EnumeratorClass() {
  return __uuidof(MMDeviceEnumerator);
}

}  // namespace core_audio

#else

#include <cstdint>
#include <cstring>

#define AUDIO_PLATFORM_EXPORT __attribute__((visibility("default")))

// A namespace keeps names as common as Sleep out of the symbols of the host's process.
namespace core_audio {

using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using ULONG = std::uint32_t;
using UINT = std::uint32_t;
using UINT32 = std::uint32_t;
using UINT64 = std::uint64_t;
using BOOL = std::int32_t;
using HRESULT = std::int32_t;
using REFERENCE_TIME = std::int64_t;  // units of 100 ns
using WCHAR = char16_t;
using LPWSTR = WCHAR*;
using LPCWSTR = const WCHAR*;

constexpr BOOL FALSE = 0;
constexpr BOOL TRUE = 1;

constexpr HRESULT StatusFromBits(std::uint32_t bits) {
  return static_cast<HRESULT>(bits);
}

constexpr HRESULT S_OK = 0;
constexpr HRESULT S_FALSE = 1;
constexpr HRESULT E_NOTIMPL = StatusFromBits(0x80004001);
constexpr HRESULT E_NOINTERFACE = StatusFromBits(0x80004002);
constexpr HRESULT E_POINTER = StatusFromBits(0x80004003);
constexpr HRESULT E_FAIL = StatusFromBits(0x80004005);
constexpr HRESULT E_UNEXPECTED = StatusFromBits(0x8000FFFF);
constexpr HRESULT E_OUTOFMEMORY = StatusFromBits(0x8007000E);
constexpr HRESULT E_INVALIDARG = StatusFromBits(0x80070057);
constexpr HRESULT E_NOTFOUND = StatusFromBits(0x80070490);
constexpr HRESULT CLASS_E_NOAGGREGATION = StatusFromBits(0x80040110);
constexpr HRESULT REGDB_E_CLASSNOTREG = StatusFromBits(0x80040154);
constexpr HRESULT CO_E_NOTINITIALIZED = StatusFromBits(0x800401F0);

constexpr HRESULT AUDCLNT_E_NOT_INITIALIZED = StatusFromBits(0x88890001);
constexpr HRESULT AUDCLNT_E_ALREADY_INITIALIZED = StatusFromBits(0x88890002);
constexpr HRESULT AUDCLNT_E_WRONG_ENDPOINT_TYPE = StatusFromBits(0x88890003);
constexpr HRESULT AUDCLNT_E_DEVICE_INVALIDATED = StatusFromBits(0x88890004);
constexpr HRESULT AUDCLNT_E_NOT_STOPPED = StatusFromBits(0x88890005);
constexpr HRESULT AUDCLNT_E_BUFFER_TOO_LARGE = StatusFromBits(0x88890006);
constexpr HRESULT AUDCLNT_E_OUT_OF_ORDER = StatusFromBits(0x88890007);
constexpr HRESULT AUDCLNT_E_UNSUPPORTED_FORMAT = StatusFromBits(0x88890008);
constexpr HRESULT AUDCLNT_E_INVALID_SIZE = StatusFromBits(0x88890009);
constexpr HRESULT AUDCLNT_E_EXCLUSIVE_MODE_NOT_ALLOWED = StatusFromBits(0x8889000E);
constexpr HRESULT AUDCLNT_E_SERVICE_NOT_RUNNING = StatusFromBits(0x88890010);
constexpr HRESULT AUDCLNT_E_BUFFER_SIZE_ERROR = StatusFromBits(0x88890016);
constexpr HRESULT AUDCLNT_E_RESOURCES_INVALIDATED = StatusFromBits(0x88890026);
constexpr HRESULT AUDCLNT_S_BUFFER_EMPTY = StatusFromBits(0x08890001);

constexpr bool SUCCEEDED(HRESULT status) {
  return status >= 0;
}
constexpr bool FAILED(HRESULT status) {
  return status < 0;
}

struct GUID {
  std::uint32_t Data1;
  std::uint16_t Data2;
  std::uint16_t Data3;
  std::uint8_t Data4[8];

  friend constexpr bool operator==(const GUID&, const GUID&) = default;
};
using IID = GUID;
using CLSID = GUID;
using REFIID = const IID&;
using REFCLSID = const CLSID&;

struct PROPERTYKEY {
  GUID fmtid;
  DWORD pid;

  friend constexpr bool operator==(const PROPERTYKEY&, const PROPERTYKEY&) = default;
};
using REFPROPERTYKEY = const PROPERTYKEY&;

constexpr PROPERTYKEY PKEY_AudioEngine_DeviceFormat = {
    {0xF19F064D, 0x082C, 0x4E27, {0xBC, 0x73, 0x68, 0x82, 0xA1, 0xBB, 0x8E, 0x4C}}, 0};
constexpr PROPERTYKEY PKEY_Device_FriendlyName = {
    {0xA45C254E, 0xDF1C, 0x4EFD, {0x80, 0x20, 0x67, 0xD1, 0x46, 0xA8, 0x50, 0xE0}}, 14};

struct BLOB {
  ULONG cbSize;
  BYTE* pBlobData;
};

using VARTYPE = std::uint16_t;
constexpr VARTYPE VT_EMPTY = 0;
constexpr VARTYPE VT_LPWSTR = 31;
constexpr VARTYPE VT_BLOB = 65;

struct PROPVARIANT {
  VARTYPE vt;
  union {
    LPWSTR pwszVal;
    BLOB blob;
  };
};

inline void PropVariantInit(PROPVARIANT* value) {
  std::memset(value, 0, sizeof *value);
}

constexpr DWORD CLSCTX_ALL = 23;
constexpr DWORD STGM_READ = 0;

constexpr WORD WAVE_FORMAT_PCM = 1;
constexpr WORD WAVE_FORMAT_IEEE_FLOAT = 3;
constexpr WORD WAVE_FORMAT_EXTENSIBLE = 0xFFFE;

// The published 18-byte header of a wave format; cbSize more bytes follow it.
#pragma pack(push, 1)
struct WAVEFORMATEX {
  WORD wFormatTag;
  WORD nChannels;
  DWORD nSamplesPerSec;
  DWORD nAvgBytesPerSec;
  WORD nBlockAlign;
  WORD wBitsPerSample;
  WORD cbSize;
};
struct WAVEFORMATEXTENSIBLE {
  WAVEFORMATEX Format;
  union {
    WORD wValidBitsPerSample;
    WORD wSamplesPerBlock;
    WORD wReserved;
  } Samples;
  DWORD dwChannelMask;
  GUID SubFormat;
};
#pragma pack(pop)
static_assert(sizeof(WAVEFORMATEX) == 18 && sizeof(WAVEFORMATEXTENSIBLE) == 40);

constexpr GUID KSDATAFORMAT_SUBTYPE_PCM = {1, 0, 0x10, {0x80, 0, 0, 0xAA, 0, 0x38, 0x9B, 0x71}};
constexpr GUID KSDATAFORMAT_SUBTYPE_IEEE_FLOAT = {3, 0, 0x10, {0x80, 0, 0, 0xAA, 0, 0x38, 0x9B, 0x71}};

enum EDataFlow : std::int32_t { eRender, eCapture, eAll };
enum ERole : std::int32_t { eConsole, eMultimedia, eCommunications };

constexpr DWORD DEVICE_STATE_ACTIVE = 1;
constexpr DWORD DEVICE_STATE_DISABLED = 2;
constexpr DWORD DEVICE_STATE_NOTPRESENT = 4;
constexpr DWORD DEVICE_STATE_UNPLUGGED = 8;
constexpr DWORD DEVICE_STATEMASK_ALL = 15;

enum AUDCLNT_SHAREMODE : std::int32_t { AUDCLNT_SHAREMODE_SHARED, AUDCLNT_SHAREMODE_EXCLUSIVE };
constexpr DWORD AUDCLNT_STREAMFLAGS_SRC_DEFAULT_QUALITY = 0x08000000;
constexpr DWORD AUDCLNT_STREAMFLAGS_AUTOCONVERTPCM = 0x80000000;
constexpr DWORD AUDCLNT_BUFFERFLAGS_DATA_DISCONTINUITY = 1;
constexpr DWORD AUDCLNT_BUFFERFLAGS_SILENT = 2;

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

// Creates an object of `classId` on the platform that the calling thread was put on (audio_platform.h). There is one
// class, EnumeratorClass(). CO_E_NOTINITIALIZED on a thread that is on no platform.
AUDIO_PLATFORM_EXPORT HRESULT CoCreateInstance(REFCLSID classId, IUnknown* outer, DWORD context, REFIID interface,
                                               void** object);

// Releases what a property value holds and makes it empty.
AUDIO_PLATFORM_EXPORT HRESULT PropVariantClear(PROPVARIANT* value);

// Memory that crosses an operation's boundary. CoTaskMemAlloc gives null when there is none.
AUDIO_PLATFORM_EXPORT void* CoTaskMemAlloc(std::size_t bytes);
AUDIO_PLATFORM_EXPORT void CoTaskMemFree(void* memory);

// Waits on the clock of the calling thread's platform; on the real clock when the thread is on none.
AUDIO_PLATFORM_EXPORT void Sleep(DWORD milliseconds);

inline constexpr CLSID CLSID_MMDeviceEnumerator = {
    0xBCDE0395, 0xE52F, 0x467C, {0x8E, 0x3D, 0xC4, 0x57, 0x92, 0x91, 0x69, 0x2E}};

// The class of the device enumerator.
inline const CLSID& EnumeratorClass() {
  return CLSID_MMDeviceEnumerator;
}

}  // namespace core_audio

#endif

namespace core_audio {

// A copy of a zero-terminated text that the platform handed out.
inline std::u16string TextFrom(LPCWSTR text) {
  return std::u16string(text, text + std::char_traits<WCHAR>::length(text));
}

}  // namespace core_audio

// The names are used as they stand in the published interfaces, as on Windows, where they are global.
using namespace core_audio;  // NOLINT(google-build-using-namespace,google-global-names-in-headers)
