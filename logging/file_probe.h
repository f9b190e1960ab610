#pragma once

#include <cstdint>
#include <filesystem>

namespace logging {

// On failure each of these raises std::filesystem::filesystem_error with the operation named below, the path and the
// system's error.

// Whether the path leads to a file of any kind, through symbolic links too. Any error but "not found" raises "exists".
// On Windows the system's errors 2, 3, 53, 123 and 267 mean "not found".
bool Exists(const std::filesystem::path& path);

// The size of a regular file in bytes. Raises "file_size".
std::uintmax_t FileSize(const std::filesystem::path& path);

// Creates the directory unless it is there; its parent must be. Raises "create_directory", also when something other
// than a directory is in its place.
void EnsureDirectory(const std::filesystem::path& path);

}  // namespace logging
