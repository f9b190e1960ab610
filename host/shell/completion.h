#pragma once

#include <string>
#include <vector>

namespace host {

// The command that the shells' scripts call. People don't, so the help doesn't show it.
inline constexpr const char* kCompleteWord = "__complete";

// What can stand in the place of the last of `words`, which follow the program's name on a command line that is still
// being typed. A line for each candidate: the whole word as the program would get it, then, where there is something to
// say about it, a tab and a description. All of it is printable. Where the name of a file is expected, the one
// line has no candidate, but a tab, "file", a tab, and the part of the word that stands before that name, such as
// "--plot=".
//
// Endpoints are asked of the platform that the words name. Gives nothing when that fails; never throws.
std::string Candidates(const std::vector<std::string>& words) noexcept;

// The script that completes rmthost in "bash", "zsh" or "fish", for the shell to read when it starts.
std::string CompletionScript(const std::string& shell);

}  // namespace host
