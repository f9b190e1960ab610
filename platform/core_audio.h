// The Core Audio operations that the module, its host and the platforms use.
//
// On Windows this is the system's own Core Audio. Elsewhere the same interfaces, statuses and structures are declared in
// core_audio_types.h and core_audio_interfaces.h, written from their published descriptions, and libaudioplatform
// implements them; only what this project uses is declared. Names, values and meanings are those of the Windows
// documentation ("Core Audio APIs", "Component Object Model").
//
// Rules that hold on both: every operation gives a status, S_OK (0) for success; a reference that an operation hands
// out belongs to the caller, who ends it with Release; text and memory handed out are released with CoTaskMemFree, a
// PROPVARIANT with PropVariantClear. Objects are used on the thread that got them.
//
// Observers: CoCreateInstance of core_audio::ObserverEnumeratorClass() gives a device enumerator whose objects, and all
// objects made by them, are carried out like any other, but are left out of the platform's trace, of the calls that its
// described faults count, and of its live objects. PropVariantClear and Sleep belong to no object and are always traced,
// so an observer releases the text or blob in a property value with CoTaskMemFree.
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
inline const CLSID& EnumeratorClass() { return __uuidof(MMDeviceEnumerator); }

// The class of an observer's enumerator: the ordinary class, unless the virtual machine is in front of the system's
// audio.
const CLSID& ObserverEnumeratorClass();

}  // namespace core_audio

#else

#include "platform/core_audio_interfaces.h"

#define AUDIO_PLATFORM_EXPORT __attribute__((visibility("default")))

namespace core_audio {

// Creates an object of `classId` on the platform that the calling thread was put on (audio_platform.h). There are two
// classes, EnumeratorClass() and ObserverEnumeratorClass(). CO_E_NOTINITIALIZED on a thread that is on no platform.
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
// Published nowhere but here.
inline constexpr CLSID CLSID_ObserverEnumerator = {
    0x7A0E5D1C, 0x3F5B, 0x4B1E, {0x9C, 0x46, 0x52, 0xE8, 0x0B, 0x7D, 0x91, 0x2A}};

// The class of the device enumerator.
inline const CLSID& EnumeratorClass() { return CLSID_MMDeviceEnumerator; }

// The class of an observer's enumerator.
inline const CLSID& ObserverEnumeratorClass() { return CLSID_ObserverEnumerator; }

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
