#pragma once

#include <filesystem>
#include <string>
#include <system_error>

// The directory of the module's log. Each system has a source file of its own; CMake picks it.
namespace host {

struct LogPlace {
  std::filesystem::path directory;
  std::string
      moved;  // in a sentence, why it isn't the framework's shared one; empty when it is, or when somebody named it
};

// Where a module that this process or a child of it loads from now on logs. The first call decides: for the directory that
// ZQRMT_LOG_DIRECTORY names, else for the shared one, else, if this user can't write there, for ZQOrb in $XDG_STATE_HOME,
// which it makes and names in that variable. Not on Windows, where there is only the shared one. Called before other threads
// are there.
const LogPlace& ChosenLog();

// Why this user can't write the log file in this directory, which the module makes when it isn't there; no error when the user
// can.
std::error_code LogWriteError(const std::filesystem::path& directory);

// Whether the module's logger takes a directory with this name. With any other it writes into the current directory.
bool IsLogDirectoryName(const std::filesystem::path& directory);

// The letters that it takes, for a person.
inline constexpr const char* kLogLetters = "the letters A to Z and a to z, digits, blanks and - . : _";

inline constexpr const char* kLogFileName = "ZQRMLOG.LOG";

}  // namespace host
