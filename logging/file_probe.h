#pragma once

#include <cstdint>
#include <filesystem>

namespace logging {

// Each of these raises std::filesystem::filesystem_error, with the operation named below, the path and the system's
// error.

// Whether there is a file of any kind at the path, at the end of its symbolic links. Any error other than not found
// raises "exists". On Windows not found are the system's errors 2, 3, 53, 123 and 267.
bool Exists(const std::filesystem::path& path);

// The size of a regular file in bytes. Any error raises "file_size".
std::uintmax_t FileSize(const std::filesystem::path& path);

// Makes sure that the directory is there, but not its parent. Any failure raises "create_directory"; a directory
// already there is none, anything else in its place is.
void EnsureDirectory(const std::filesystem::path& path);

}  // namespace logging
