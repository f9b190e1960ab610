// The bytes of files that people name.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>

namespace text {

struct FileBytes {
  std::string bytes;
  bool isCut = false;   // there are more bytes behind these
  std::string problem;  // why there are none, as "No such file or directory"; empty when the file was read
};

// Reads at most `most` bytes of a regular file, from the byte `start` on. Nothing else is read or waited for, whatever the
// name leads to: a pipe without a writer and a device are a problem like a file that isn't there. Throws std::bad_alloc.
// Each system has a source file of its own; CMake picks it.
FileBytes ReadRegularFile(const std::filesystem::path& file, std::uintmax_t start, std::size_t most);

inline constexpr const char* kNoRegularFile = "it is a folder, a pipe or a device, and no regular file";

}  // namespace text
