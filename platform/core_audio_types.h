// The types, statuses and structures of Core Audio that this project uses, for systems that don't have them. Names, values
// and layouts are the published ones. Include platform/core_audio.h instead, which has them everywhere.
#pragma once

#include <cstdint>
#include <cstring>

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

constexpr HRESULT StatusFromBits(std::uint32_t bits) { return static_cast<HRESULT>(bits); }

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

constexpr bool SUCCEEDED(HRESULT status) { return status >= 0; }
constexpr bool FAILED(HRESULT status) { return status < 0; }

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

inline void PropVariantInit(PROPVARIANT* value) { std::memset(value, 0, sizeof *value); }

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

}  // namespace core_audio
