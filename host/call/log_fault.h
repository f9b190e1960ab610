#pragma once

#include <filesystem>
#include <string>

namespace host {

// Why nothing of a call has come to the log in this directory, as far as can be found out now: a sentence.
std::string LogFault(const std::filesystem::path& directory);

}  // namespace host
