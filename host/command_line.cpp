#include "host/command_line.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace host {
namespace {

constexpr const char* kFurtherOptions = "The options of 'rmthost --help' are taken here too.\n";
constexpr const char* kContractHelp = "A file of JSON, UTF-8 or UTF-16LE with a byte order mark; - for standard input";

constexpr const char* kCheckHelp =
    "Shows by JSON Pointer what came back changed, what was dropped or added, and which keys are named twice, of "
    "which\n"
    "the module takes the first. Numbers are compared by kind and value: 4 is not 4.0, but 1.50 is 1.5. Lists are\n"
    "compared by position; but elements that a list skips for their kind, and entries of a DevList outside the page\n"
    "that CurrentIndex asks for, are dropped from where they stand. A default is what the module gives for a key when\n"
    "the record around it is empty.\n"
    "\n"
    "No audio test is run, whatever the contract holds, and --platform isn't used. The contract goes through\n"
    "AudioRecordTest twice, which tests nothing without a DeviceInstanceID or without AudioData: once with an empty\n"
    "DeviceInstanceID put in front of those in DeviceInfo, and once with an AudioData of null. Each of the two comes\n"
    "from the reply to the other call. A contract without DeviceInfo gets an empty one, which isn't shown.\n"
    "The module logs these calls as any other.\n"
    "\n"
    "Exit codes: 0 nothing but defaults was added, 1 anything else was found, 2 the text is no contract.\n";

constexpr const char* kDescription =
    "Runs the audio tests of ZQRMTTestsAudio and shows what they say.\n"
    "An endpoint is named by its id, its name, or an unambiguous piece of either.";

CLI::Option* AddText(CLI::App& app, const std::string& name, std::optional<std::string>& target,
                     const std::string& description) {
  // By way of a function: CLI11 would take an empty text for no text.
  return app.add_option_function<std::string>(
      name, [&target](const std::string& text) { target = text; }, description);
}

void AddCommands(CLI::App& app, Options& options) {
  using Command = Options::Command;
  const auto add = [&](Command command, const std::string& description) {
    CLI::App* added = app.add_subcommand(CommandWord(command), description);
    added->footer(kFurtherOptions);
    added->callback([&options, command] { options.command = command; });
    return added;
  };
  add(Command::kList, "Show the endpoints");

  CLI::App* play = add(Command::kPlay, "Play a tone of one second on a render endpoint");
  AddText(*play, "ENDPOINT", options.endpoint, "The render endpoint; without it the default one");

  CLI::App* record = add(Command::kRecord, "Record from a capture endpoint and measure the largest amplitude");
  AddText(*record, "CAPTURE", options.endpoint, "The capture endpoint; without it the default one");
  AddText(*record, "--render", options.render,
          "The render endpoint that plays a tone meanwhile; without it the test listens for three seconds")
      ->option_text("ENDPOINT");

  CLI::App* run = add(Command::kRun, "Hand a data contract to the module as it is, and print its reply as it is");
  run->add_option_function<std::string>(
         "TEST", [&options](const std::string& test) { options.test = test == "play" ? Test::kPlay : Test::kRecord; },
         "play or record")
      ->required()
      ->check([](const std::string& test) {
        return test == "play" || test == "record" ? "" : "'" + test + "' is no test: play and record are";
      });
  run->add_option("CONTRACT", options.contract, kContractHelp)->required();

  CLI::App* check = add(Command::kCheck, "Show what a data contract loses, gains or has changed in the module");
  check->add_option("CONTRACT", options.contract, kContractHelp)->required();
  check->add_flag("--all", options.all, "Show every finding, not just the first 20 of each kind")
      ->disable_flag_override();
  check->footer(std::string(kCheckHelp) + "\n" + kFurtherOptions);

  add(Command::kVersion, "Show the versions and files in use");
}

void AddOptions(CLI::App& app, Options& options) {
  app.add_option("--platform", options.platform,
                 "The audio platform: 'virtual', or 'virtual:FILE' for the machine described in FILE")
      ->option_text("NAME");
  AddText(app, "--module", options.module, "The test module; without it the one beside rmthost")->option_text("FILE");
  app.add_flag("--json")->disable_flag_override()->description(
      "Write one JSON document to standard output, also for errors");
  app.add_flag("--quiet", options.quiet, "Print nothing but errors; the exit code tells")->disable_flag_override();
}

}  // namespace

std::variant<Options, HelpText> ParseCommandLine(std::vector<std::string> arguments) {
  Options options;
  CLI::App app(kDescription, "rmthost");
  // On every system "/x" is a path.
  app.allow_windows_style_options(false);
  // The options below are taken behind the command too.
  app.fallthrough();
  AddOptions(app, options);
  AddCommands(app, options);
  app.require_subcommand(1);
  app.footer(kExitCodesHelp);

  // CLI11 takes the arguments from the end of the list.
  std::reverse(arguments.begin(), arguments.end());
  try {
    app.parse(std::move(arguments));
  } catch (const CLI::CallForHelp&) {
    const std::vector<CLI::App*> commands = app.get_subcommands();
    return HelpText{commands.empty() ? app.help() : commands.front()->help(app.get_name())};
  } catch (const CLI::ParseError& error) {
    throw Failure(ExitCode::kBadInput, std::string("The command line can't be used: ") + error.what() + ".",
                  "'rmthost --help' shows the commands and options.");
  }
  return options;
}

bool HasFlag(const std::vector<std::string>& arguments, const std::string& flag) {
  const auto end = std::find(arguments.begin(), arguments.end(), "--");
  return std::find(arguments.begin(), end, flag) != end;
}

const char* CommandWord(Options::Command command) {
  switch (command) {
    case Options::Command::kList:
      return "list";
    case Options::Command::kPlay:
      return "play";
    case Options::Command::kRecord:
      return "record";
    case Options::Command::kRun:
      return "run";
    case Options::Command::kCheck:
      return "check";
    case Options::Command::kVersion:
      break;
  }
  return "version";
}

}  // namespace host
