// The virtual machine in front of the system's Core Audio, for this process: the shipped module runs on it unchanged.
//
// The machine is registered with COM for the device enumerator's class, so that CoCreateInstance gives its objects, which
// implement the system's own interfaces. Time and property values don't go through COM: a module's imports of Sleep and
// PropVariantClear are redirected to the machine, so that its clock moves and its trace is whole.
#pragma once

#include <windows.h>

#include <string>

namespace virtual_audio {

// Puts a fresh machine in front: "virtual", or "virtual:FILE" with the description in FILE (docs/virtual-machine.md). COM is
// initialised on the calling thread. Throws std::exception with a sentence when the description can't be used.
void PutMachineInFront(const std::string& description);

// Takes it away again. Nothing when there is none.
void TakeMachineAway();

// Redirects a loaded module's imports to the machine. Nothing when none is in front.
void PutMachineInFrontOf(HMODULE module);

// The machine as a UTF-8 JSON text, as AudioPlatformState gives it elsewhere; empty when none is in front.
std::string MachineState();

}  // namespace virtual_audio
