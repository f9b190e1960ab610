#include <fmt/format.h>

#include "host/shell/completion_words.h"

namespace host {
namespace {

constexpr const char* kHead = R"sh(# Completes rmthost in fish. Written by 'rmthost completion fish'.

)sh";

constexpr const char* kFunctions = R"sh(
# The command that was typed so far, then the number of the argument that is next.
function __rmthost_place
    set -l path
    set -l place 1
    set -l option
    for word in (commandline -opc)[2..]
        if test -n "$option"
            set option
        else if string match -q -- '-*' $word
            contains -- $word $__rmthost_value_options; and set option $word
        else if contains -- "$path $word" $__rmthost_commands
            set path "$path $word"
        else
            set place (math $place + 1)
        end
    end
    echo "$path $place"
end

# Whether that is the command $argv[1] and, when it is given, the argument $argv[2].
function __rmthost_at
    set -l place (__rmthost_place)
    if set -q argv[2]
        test "$place" = "$argv[1] $argv[2]"
    else
        test (string replace -r ' \d+$' '' -- $place) = "$argv[1]"
    end
end

# The endpoints of a flow, by id and by name, on the platform that was typed.
function __rmthost_endpoints
    set -l words (commandline -opc)
    set -l platform
    for at in (seq 2 (count $words))
        string match -q -- '--platform=*' $words[$at]; and set platform $words[$at]
        test "$words[$at]" = --platform; and set platform $words[$at..(math $at + 1)]
    end
    $words[1] list --names $argv[1] $platform 2>/dev/null | while read -d \t -l id name
        printf '%s\t%s\n' $id $name $name $id
    end
end

function __rmthost_platforms
    string split ' ' $__rmthost_platform_words
    set -l typed (commandline -ct | string replace -r '^--platform=' '')
    if string match -q 'virtual:*' $typed
        __fish_complete_path (string replace virtual: '' $typed) | string replace -r '^' virtual:
    end
end

complete -c rmthost -e
complete -c rmthost -f
)sh";

// In single quotes of fish, where only these two mean something else.
std::string Quoted(std::string_view text) {
  std::string quoted = "'";
  for (const char c : text) {
    if (c == '\'' || c == '\\') quoted += '\\';
    quoted += c;
  }
  return quoted + "'";
}

// The options of "complete" for a value of a kind.
std::string ValueOf(const std::string& kind) {
  if (kind == "file") return " -F";
  if (kind == "none") return " -f";
  if (kind == "platform") return " -f -a '(__rmthost_platforms)'";
  if (kind == "render" || kind == "capture") return fmt::format(" -f -k -a '(__rmthost_endpoints {})'", kind);
  return " -f -a " + Quoted(kind);
}

std::string OptionLine(const std::string& condition, const CommandArgument& option) {
  std::string line = "complete -c rmthost" + condition;
  for (const std::string& name : option.names)
    line += name[1] == '-' ? " -l " + name.substr(2) : " -s " + name.substr(1);
  if (!option.value.empty()) line += " -r" + ValueOf(KindOf(option.value));
  return line + " -d " + Quoted(ShortDescription(option.description)) + "\n";
}

}  // namespace

std::string FishScript(const CommandTree& tree) {
  std::string paths, lines;
  ForEachCommand(tree, [&](const CommandTree& command) {
    const std::string place = command.path.empty() ? "" : " " + command.path;
    const std::string condition = " -n " + Quoted(fmt::format("__rmthost_at {}", Quoted(place)));
    if (!place.empty()) paths += " " + Quoted(place);
    for (const CommandTree& next : command.commands) {
      lines += fmt::format("complete -c rmthost{} -a {} -d {}\n", condition, next.Name(),
                           Quoted(ShortDescription(next.description)));
    }
    // The program's own options are taken behind every command.
    for (const CommandArgument& option : command.options) {
      if (!place.empty() && option.names.back() == "--help") continue;
      lines += OptionLine(place.empty() ? "" : condition, option);
    }
    for (std::size_t i = 0; i < command.arguments.size(); ++i) {
      const CommandArgument& argument = command.arguments[i];
      lines += fmt::format("complete -c rmthost -n {}{} -d {}\n",
                           Quoted(fmt::format("__rmthost_at {} {}", Quoted(place), i + 1)),
                           ValueOf(KindOf(argument.value)), Quoted(ShortDescription(argument.description)));
    }
  });
  return kHead + fmt::format("set -g __rmthost_platform_words {}\n", Quoted(PlatformWords())) +
         fmt::format("set -g __rmthost_value_options {}\n", ValueOptions(tree)) +
         fmt::format("set -g __rmthost_commands{}\n", paths) + kFunctions + lines;
}

}  // namespace host
