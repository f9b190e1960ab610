#pragma once

#include <filesystem>

// Where rmthost keeps what its processes tell each other. Each system has a source file of its own; CMake picks it.
namespace host {

// The folder of this user for what must outlive a restart of the machine: rmthost in $XDG_STATE_HOME, which is
// ~/.local/state when it isn't set (XDG Base Directory Specification 0.8), or in %LOCALAPPDATA%. It is made when it isn't
// there, for this user alone. Throws Failure when there can't be such a folder.
std::filesystem::path StateFolder();

// The same for what need not outlive the session: rmthost in $XDG_RUNTIME_DIR where there is one, else the above.
std::filesystem::path SessionFolder();

}  // namespace host
