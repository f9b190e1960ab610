#pragma once

#include "platform/core_audio.h"

namespace virtual_audio {

// The class of an observer's enumerator while the virtual machine is in front of the system's audio. Published nowhere
// but here.
inline constexpr CLSID kObserverClass = {0x7A0E5D1C, 0x3F5B, 0x4B1E, {0x9C, 0x46, 0x52, 0xE8, 0x0B, 0x7D, 0x91, 0x2A}};

// Whether the machine is in front in this process, so that the class is there.
extern bool g_hasObserverClass;

}  // namespace virtual_audio
