#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/shell/command_tree.h"

// What the shells' scripts are made of. Each script asks, for the word that is typed, what kind of value belongs there:
//
//   render, capture   an active endpoint, asked of "rmthost list --names"
//   platform          what --platform takes
//   file              a file
//   words that are separated by blanks   one of these
//   none              anything
namespace host {

// The kind for what the help calls a value, such as "FILE".
std::string KindOf(const std::string& value);

// What --platform takes on this system, without the file or the server that can follow.
std::string PlatformWords();

// What comes before the first semicolon, colon or line feed of a description.
std::string ShortDescription(const std::string& description);

// The names of all options that take a value, in any command, separated by blanks.
std::string ValueOptions(const CommandTree& tree);

// `names`, separated by blanks.
std::string Joined(const std::vector<std::string>& names);

// `text` as one word of a POSIX shell, which bash and zsh are: in single quotes.
std::string ShellQuoted(std::string_view text);

std::string BashScript(const CommandTree& tree);
std::string ZshScript(const CommandTree& tree);
std::string FishScript(const CommandTree& tree);

}  // namespace host
