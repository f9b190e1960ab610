#pragma once

#include <filesystem>
#include <optional>

// The folders of the XDG Base Directory Specification 0.8. Not on Windows.
namespace host {

// $XDG_STATE_HOME, which is ~/.local/state when it isn't set.
std::filesystem::path StateHome();

// $XDG_RUNTIME_DIR; nothing when it isn't set.
std::optional<std::filesystem::path> RuntimeFolder();

}  // namespace host
