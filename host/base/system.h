#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

// What the host asks the operating system for. Each system has a source file of its own; CMake picks it.
namespace host {

// The arguments behind the program's name, as UTF-8 where the system knows their encoding.
std::vector<std::string> Arguments(int argc, const char* const* argv);

// The running program; empty when the system doesn't say.
std::filesystem::path ProgramFile();

// Why the last of the system's functions failed, in this thread.
std::error_code LastError();

std::int64_t ProcessId();
// The computer's name; empty when it has none.
std::string MachineName();

bool IsTerminal(std::FILE* stream);
// Columns of the terminal that a stream is on; 80 when that isn't known.
int TerminalWidth(std::FILE* stream);
// Whether the terminal is set up for more than ASCII.
bool TerminalIsUtf8();

}  // namespace host
