// For sources of Windows only.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace host {

// The standard streams of a process to come; null for one that it doesn't get.
struct StandardStreams {
  HANDLE input = nullptr, output = nullptr, errors = nullptr;
};

// Starts this program once more, with `command`, in ASCII, as its only argument, and lets it inherit these streams and
// nothing else: a pipe of a shell's would wait for that process too. `flags` are CreateProcess's. The caller closes both
// handles of the result. Nothing when the system gives no process, for the reason of GetLastError.
std::optional<PROCESS_INFORMATION> StartSelf(const std::string& command, const StandardStreams& streams, DWORD flags);

}  // namespace host
