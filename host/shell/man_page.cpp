#include "host/shell/man_page.h"

#include <fmt/format.h>

#include <algorithm>

#include "host/base/exit_codes.h"
#include "host/shell/command_tree.h"

namespace host {
namespace {

// When what stands here was last looked through.
constexpr const char* kDate = "November 23, 2026";

constexpr const char* kEnvironment = R"(.Sh ENVIRONMENT
.Bl -tag -width Ds
.It Ev NO_COLOR
When it isn't empty, nothing is shown in colour.
.El
)";

constexpr const char* kFiles = R"(.Sh FILES
.Bl -tag -width Ds
.It Pa ZQRMLOG.LOG
The log that the module writes and shares with the other modules of its framework.
.Ql rmthost version
shows its directory, which is fixed when the module is built.
.El
)";

constexpr const char* kExamples = R"man(.Sh EXAMPLES
Show the endpoints, then play a tone on one of them, named by a piece of its name:
.Bd -literal -offset indent
$ rmthost list
$ rmthost play head
.Ed
.Pp
With a cable from the output to the input, record while the tone plays, and draw what was heard:
.Bd -literal -offset indent
$ rmthost record mic --render speaker --plot heard.svg
.Ed
.Pp
In a script, see whether the peak lies within limits in each of twenty runs:
.Bd -literal -offset indent
$ rmthost repeat -n 20 record mic --render speaker --min-peak 0.2 --quiet
$ echo $?
.Ed
.Pp
Try it on a machine without sound:
.Bd -literal -offset indent
$ rmthost record --render speaker --platform virtual
.Ed
.Pp
Complete commands, options and the names of endpoints in this bash:
.Bd -literal -offset indent
$ eval "$(rmthost completion bash)"
.Ed
)man";

// A backslash and a hyphen mean more than themselves to the formatter; a dot or a quote does at the start of a line.
std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    if ((c == '.' || c == '\'') && (escaped.empty() || escaped.back() == '\n')) escaped += "\\&";
    if (c == '\\' || c == '-') escaped += '\\';
    escaped += c == '\\' ? 'e' : c;
  }
  return escaped;
}

// Running text, each sentence on a line of its own as the formatter wants it. An empty line ends a paragraph.
std::string Prose(std::string_view text) {
  std::string prose;
  while (!text.empty()) {
    const std::size_t end = std::min({text.size(), text.find('\n'), text.find(". ")});
    const bool isSentence = end < text.size() && text[end] == '.';
    const std::string_view line = text.substr(0, end + (isSentence ? 1 : 0));
    prose += line.empty() ? ".Pp" : Escaped(line);
    prose += '\n';
    text.remove_prefix(std::min(text.size(), line.size() + 1));
  }
  return prose;
}

std::string FlagMacro(const CommandArgument& option) {
  std::string macro;
  for (const std::string& name : option.names)
    macro += fmt::format("{}Fl {}", macro.empty() ? "" : " , ", Escaped(name.substr(1)));
  return option.value.empty() ? macro : macro + " Ar " + option.value;
}

std::string Item(const std::string& macro, const std::string& description) {
  std::string sentence = description;
  if (!sentence.empty() && sentence.back() != '.') sentence += '.';
  return ".It " + macro + "\n" + Prose(sentence);
}

std::string List(const std::string& items) {
  return items.empty() ? "" : ".Bl -tag -width Ds\n" + items + ".El\n";
}

bool IsHelp(const CommandArgument& option) {
  return option.names.back() == "--help";
}

// A line of the synopsis, without the options that every command takes.
std::string Usage(const CommandTree& command) {
  std::string line = "Cm " + command.path;
  for (const CommandArgument& option : command.options) {
    if (!IsHelp(option)) line += " Oo " + FlagMacro({{option.names.front()}, option.value, "", false}) + " Oc";
  }
  for (const CommandArgument& argument : command.arguments) {
    line += argument.isRequired ? " Ar " + argument.value : " Oo Ar " + argument.value + " Oc";
  }
  return line;
}

// What stands below the help of a command, without the sentence that ends that of every command.
std::string Remark(const CommandTree& command, std::string_view common) {
  std::string_view footer = command.footer;
  if (footer.ends_with(common)) footer.remove_suffix(common.size());
  while (footer.ends_with('\n')) footer.remove_suffix(1);
  return footer.empty() ? "" : ".Pp\n" + Prose(footer);
}

std::string Commands(const CommandTree& tree) {
  const std::string common = tree.commands.front().footer;
  std::string items;
  for (const CommandTree& first : tree.commands) {
    ForEachCommand(first, [&](const CommandTree& command) {
      std::string arguments;
      for (const CommandArgument& option : command.options) {
        if (!IsHelp(option)) arguments += Item(FlagMacro(option), option.description);
      }
      for (const CommandArgument& argument : command.arguments) {
        arguments += Item("Ar " + argument.value, argument.description);
      }
      items += Item(Usage(command), command.description) + Remark(command, common) + List(arguments);
    });
  }
  return ".Sh COMMANDS\n" + List(items);
}

// "  130  interrupted" becomes an item.
std::string ExitStatus() {
  std::string items;
  std::string_view text = kExitCodesHelp;
  while (!text.empty()) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    const std::size_t code = line.find_first_of("0123456789");
    if (code == std::string_view::npos || line.front() != ' ') continue;
    const std::size_t end = line.find(' ', code);
    items +=
        Item(std::string(line.substr(code, end - code)), std::string(line.substr(line.find_first_not_of(' ', end))));
  }
  return ".Sh EXIT STATUS\n" + List(items);
}

}  // namespace

std::string ManPage(const CLI::App& app) {
  const CommandTree tree = ReadCommandTree(app);
  std::string synopsis, options;
  for (const CommandTree& command : tree.commands) {
    synopsis += ".Nm\n." + Usage(command) + (command.commands.empty() ? "\n" : " Ar command ...\n");
  }
  for (const CommandArgument& option : tree.options) options += Item(FlagMacro(option), option.description);
  return fmt::format(".Dd {}\n.Dt RMTHOST 1\n.Os\n", kDate) +
         ".Sh NAME\n.Nm rmthost\n.Nd run the audio tests of ZQRMTTestsAudio and show what they say\n" +
         ".Sh SYNOPSIS\n" + synopsis + ".Sh DESCRIPTION\n" + Prose(tree.description) + Commands(tree) +
         ".Sh OPTIONS\nEvery command takes these, before or behind it.\n" + List(options) + kEnvironment + kFiles +
         ExitStatus() + kExamples;
}

}  // namespace host
