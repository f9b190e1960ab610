#pragma once

#include <filesystem>
#include <string_view>
#include <system_error>

// What OutputFile needs of the operating system. Each system has a source file of its own; CMake picks it.
namespace host {

// Makes an empty file where nothing is, not even a link. Gives why it can't.
std::error_code MakeNewFile(const std::filesystem::path& file);

// Makes `content` the whole content of a file that is there; a link isn't followed. Gives why it can't.
std::error_code OverwriteFile(const std::filesystem::path& file, std::string_view content);

}  // namespace host
