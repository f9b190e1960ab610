#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

namespace logging {

// On failure each of these raises std::filesystem::filesystem_error with the operation named below, the path and the
// system's error.

// Whether the path leads to a file of any kind, through symbolic links too. Any error but "not found" raises "exists".
// On Windows the system's errors 2, 3, 53, 123 and 267 mean "not found".
bool Exists(const std::filesystem::path& path);

// The size in bytes of the regular file that the path leads to; nothing if there is none. Raises "exists" as Exists
// does, and "file_size" for something other than a regular file. Both come from one look at the file system, as another
// process may move the file away between two.
std::optional<std::uintmax_t> SizeIfThere(const std::filesystem::path& path);

// Creates the directory unless it is there; its parent must be. Raises "create_directory", also when something other
// than a directory is in its place. On POSIX systems everybody may read a new directory, whatever the umask, and only
// its owner may write to it.
void EnsureDirectory(const std::filesystem::path& path);

}  // namespace logging
