#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/backend.h"

namespace virtual_audio {

// A fresh virtual machine: the one that the file describes (its name is UTF-8), or the built-in one without a file. Throws
// platform::PlatformError when there can't be such a machine, and std::bad_alloc.
std::unique_ptr<platform::Backend> OpenMachine(const std::optional<std::string>& file);

}  // namespace virtual_audio
