#include <fmt/format.h>

#include "host/shell/completion_words.h"

namespace host {
namespace {

constexpr const char* kHead = R"sh(#compdef rmthost
# Completes rmthost in zsh. Written by 'rmthost completion zsh'.

)sh";

// $rmthost_words is the whole command line: _arguments hides what stands before a command from what completes it.
constexpr const char* kTail = R"sh(
# The endpoints of the flow that is the last argument, by id and by name, on the platform that was typed. The arguments
# before it are for compadd.
_rmthost_endpoints() {
  local -a found ids names platform
  local -i at=${rmthost_words[(I)--platform]}
  platform=(${(M)rmthost_words:#--platform=*})
  (( at )) && platform=(--platform $rmthost_words[at+1])
  found=(${(f)"$(${(Q)rmthost_words[1]/#\~/$HOME} list --names $argv[-1] ${(Q)platform} 2>/dev/null)"})
  ids=(${found%%$'\t'*})
  names=(${found#*$'\t'})
  compadd "${(@)argv[1,-2]}" -l -d names -a ids
  compadd "${(@)argv[1,-2]}" -l -d ids -a names
}

_rmthost_platforms() {
  if compset -P virtual:; then
    _files "$@"
  else
    compadd "$@" -S '' -- ${=_rmthost_platform_words}
  fi
}

if [[ $funcstack[1] == _rmthost ]]; then
  _rmthost "$@"
else
  compdef _rmthost rmthost
fi
)sh";

// Text in an argument of _arguments or _describe.
std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    if (c == '[' || c == ']' || c == ':' || c == '\\') escaped += '\\';
    escaped += c;
  }
  return escaped;
}

// What completes a value of a kind, with the message before it.
std::string ValueOf(const CommandArgument& argument) {
  const std::string kind = KindOf(argument.value);
  std::string action = "(" + kind + ")";
  if (kind == "none") action = " ";
  if (kind == "file") action = "_files";
  if (kind == "platform") action = "_rmthost_platforms";
  if (kind == "render" || kind == "capture") action = "_rmthost_endpoints " + kind;
  return fmt::format(":{}:{}", argument.value, action);
}

std::string OptionSpecification(const CommandArgument& option) {
  const std::string description = fmt::format("[{}]", Escaped(ShortDescription(option.description)));
  const std::string value = option.value.empty() ? "" : ValueOf(option);
  std::string specifications;
  for (const std::string& name : option.names) {
    const std::string form = name + (value.empty() || name[1] != '-' ? "" : "=");
    specifications += " " + ShellQuoted(fmt::format("({}){}{}{}", Joined(option.names), form, description, value));
  }
  return specifications;
}

std::string FunctionName(const CommandTree& command) {
  std::string name = command.path.empty() ? "_rmthost" : "_rmthost_" + command.path;
  for (char& c : name) c = c == ' ' ? '_' : c;
  return name;
}

std::string Function(const CommandTree& command, bool isProgram) {
  std::string specifications = isProgram ? "" : " $_rmthost_global";
  for (const CommandArgument& option : command.options) {
    if (isProgram) continue;
    if (option.names.back() != "--help") specifications += " \\\n   " + OptionSpecification(option);
  }
  for (std::size_t i = 0; i < command.arguments.size(); ++i) {
    const CommandArgument& argument = command.arguments[i];
    specifications += " \\\n    " + ShellQuoted(fmt::format("{}{}", i + 1, ValueOf(argument)));
  }
  if (isProgram) specifications = " $_rmthost_global";
  const std::string name = FunctionName(command);
  if (command.commands.empty()) return fmt::format("{}() {{\n  _arguments -s{}\n}}\n", name, specifications);

  std::string commands;
  for (const CommandTree& next : command.commands) {
    commands += " " + ShellQuoted(next.Name() + ":" + Escaped(ShortDescription(next.description)));
  }
  return fmt::format(
      "{0}() {{\n"
      "  local curcontext=$curcontext state line\n"
      "  local -A opt_args\n"
      "{1}"
      "  local -a commands=({2})\n"
      "  _arguments -s -C{3} '(-)1: :->command' '(-)*:: :->arguments'\n"
      "  case $state in\n"
      "    command) _describe command commands ;;\n"
      "    arguments) (( $+functions[{0}_$words[1]] )) && {0}_$words[1] ;;\n"
      "  esac\n}}\n",
      name, isProgram ? "  local -a rmthost_words=(\"${words[@]}\")\n" : "", commands, specifications);
}

}  // namespace

std::string ZshScript(const CommandTree& tree) {
  std::string global, functions;
  for (const CommandArgument& option : tree.options) global += "\n " + OptionSpecification(option);
  ForEachCommand(tree, [&](const CommandTree& command) { functions += Function(command, command.path.empty()); });
  return kHead +
         fmt::format("_rmthost_platform_words={}\n_rmthost_global=({}\n)\n\n", ShellQuoted(PlatformWords()), global) +
         functions + kTail;
}

}  // namespace host
