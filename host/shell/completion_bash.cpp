#include <fmt/format.h>

#include "host/shell/completion_words.h"

namespace host {
namespace {

constexpr const char* kHead = R"sh(# Completes rmthost in bash. Written by 'rmthost completion bash'.

)sh";

// Bash has split what was typed also at = and :, and puts a completion in the place of the last piece. It is looked at
// as a whole here, and what stands before that piece is taken off again.
constexpr const char* kTail = R"sh(
# Adds the words that begin with what was typed, quoted unless it has a quote in front.
_rmthost_offer() {
  local word
  for word; do
    [[ $word == "$typed"* ]] || continue
    [[ $quote ]] || printf -v word %q "$word"
    word=$before$word
    COMPREPLY+=("${word#"$kept"}")
  done
}

_rmthost_offer_endpoints() {
  local id name
  while IFS=$'\t' read -r id name; do
    _rmthost_offer "$id" "$name"
  done < <("${words[0]/#\~/$HOME}" list --names "$1" "${platform[@]}" 2>/dev/null)
}

_rmthost_offer_kind() {
  case $1 in
    none) ;;
    file)
      compopt -o filenames
      mapfile -t COMPREPLY < <(compgen -f -- "$typed")
      ;;
    render | capture) _rmthost_offer_endpoints "$1" ;;
    platform)
      if [[ $typed == virtual:* ]]; then
        typed=${typed#virtual:}
        _rmthost_offer_kind file
      else
        compopt -o nospace
        _rmthost_offer $_rmthost_platforms
      fi
      ;;
    *) _rmthost_offer $1 ;;
  esac
}

_rmthost() {
  local IFS=$' \t\n'
  local -a words=() platform=()
  local word path= typed= quote= before= kept= option= kind
  local -i place=1
  COMPREPLY=()

  for word in "${COMP_WORDS[@]:0:COMP_CWORD+1}"; do
    if ((${#words[@]})) && [[ $word == [=:]* || ${words[-1]} == *[=:] ]]; then
      words[-1]+=$word
    else
      words+=("$word")
    fi
  done
  for word in "${words[@]:1:${#words[@]}-2}"; do
    if [[ $option ]]; then
      [[ $option == --platform ]] && platform=(--platform "$word")
      option=
    elif [[ $word == --platform=* ]]; then
      platform=("$word")
    elif [[ $word == -* ]]; then
      [[ " $_rmthost_value_options " == *" $word "* ]] && option=$word
    elif [[ " $(_rmthost_commands "$path") " == *" $word "* ]]; then
      path+=${path:+ }$word
    else
      place+=1
    fi
  done

  typed=${words[-1]}
  word=${COMP_WORDS[COMP_CWORD]}
  [[ $word == [=:] ]] && word=
  kept=${typed%"$word"}
  if [[ $typed == --*=* ]]; then
    option=${typed%%=*}
    before=$option=
    typed=${typed#*=}
  fi
  if [[ $typed == [\'\"]* ]]; then
    quote=${typed::1}
    typed=${typed:1}
  else
    typed=${typed//\\/}
  fi

  if [[ $option ]]; then
    _rmthost_offer_kind "$(_rmthost_kind "$path $option")"
  elif [[ $typed == -* ]]; then
    _rmthost_offer $(_rmthost_options "$path") $(_rmthost_options '')
  else
    _rmthost_offer $(_rmthost_commands "$path")
    kind=$(_rmthost_kind "$path $place")
    [[ $kind ]] && _rmthost_offer_kind "$kind"
  fi
}
complete -F _rmthost rmthost
)sh";

// A function that prints `words` by its first argument.
std::string Function(const std::string& name, const std::string& cases) {
  return fmt::format("{}() {{\n  case $1 in\n{}  esac\n}}\n", name, cases);
}

std::string Case(const std::string& pattern, const std::string& words) {
  return fmt::format("    {}) echo {} ;;\n", pattern, ShellQuoted(words));
}

}  // namespace

std::string BashScript(const CommandTree& tree) {
  std::string commands, options, kinds;
  ForEachCommand(tree, [&](const CommandTree& command) {
    const bool isProgram = command.path.empty();
    std::vector<std::string> below, names;
    for (const CommandTree& next : command.commands) below.push_back(next.Name());
    for (const CommandArgument& option : command.options) {
      names.insert(names.end(), option.names.begin(), option.names.end());
      if (option.value.empty()) continue;
      for (const std::string& name : option.names) {
        // The program's own options are taken behind every command.
        const std::string pattern = isProgram ? "*" + ShellQuoted(" " + name) : ShellQuoted(command.path + " " + name);
        kinds += Case(pattern, KindOf(option.value));
      }
    }
    for (std::size_t i = 0; i < command.arguments.size(); ++i) {
      kinds += Case(ShellQuoted(fmt::format("{} {}", command.path, i + 1)), KindOf(command.arguments[i].value));
    }
    if (!below.empty()) commands += Case(ShellQuoted(command.path), Joined(below));
    options += Case(ShellQuoted(command.path), Joined(names));
  });
  return kHead +
         fmt::format("_rmthost_platforms={}\n_rmthost_value_options={}\n", ShellQuoted(PlatformWords()),
                     ShellQuoted(ValueOptions(tree))) +
         "\n# What can follow a command: commands, options, and the kinds of values.\n" +
         Function("_rmthost_commands", commands) + Function("_rmthost_options", options) +
         Function("_rmthost_kind", kinds) + kTail;
}

}  // namespace host
