#pragma once

#include <memory>
#include <string>

#include "platform/platform.h"

namespace virtual_audio {

// A fresh virtual machine: the built-in one, or the one that the file describes (its name is UTF-8). Throw
// platform::PlatformError when there can't be such a machine, and std::bad_alloc.
std::unique_ptr<platform::Platform> BuiltInPlatform();
std::unique_ptr<platform::Platform> PlatformFromFile(const std::string& file);

}  // namespace virtual_audio
