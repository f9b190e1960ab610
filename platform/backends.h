#pragma once

#include <memory>
#include <string>

#include "platform/backend.h"

namespace platform {

// Opens the backend that a description such as "virtual:FILE" names (UTF-8), never another in its place. Throws
// PlatformError, for an unknown name with a sentence that lists those there are, and std::bad_alloc.
std::unique_ptr<Backend> OpenBackend(const std::string& description);

}  // namespace platform
