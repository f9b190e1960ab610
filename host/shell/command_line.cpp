#include "host/shell/command_line.h"

#include <fmt/core.h>

#include <CLI/CLI.hpp>
#include <algorithm>

#include "host/call/guarded_call.h"
#include "host/endpoints/platform.h"
#include "host/shell/command_line_error.h"

namespace host {
namespace {

constexpr const char* kHelpWord = "help";
constexpr const char* kFurtherOptions = "The options of 'rmthost --help' are taken here too.\n";
constexpr const char* kContractHelp = "A file of JSON, UTF-8 or UTF-16LE with a byte order mark; - for standard input";

constexpr const char* kReportHelp = "Write verdict, checks, pictures, settings and log as a page into an HTML file";

constexpr const char* kJunitHelp = "Write the results as JUnit's XML, a case for each check, into an XML file";

constexpr int kMostRuns = 100000;

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
    "A test unmutes its endpoints and plays at full level: take headphones off first. Mute and volume are put back.\n"
    "An endpoint is named by its id, its name, or an unambiguous piece of either.";

CLI::Option* AddText(CLI::App& app, const std::string& name, std::optional<std::string>& target,
                     const std::string& description) {
  // By way of a function: CLI11 would take an empty text for no text.
  return app.add_option_function<std::string>(
      name, [&target](const std::string& text) { target = text; }, description);
}

// Numbers that are none, such as "nan", don't lie between any limits.
CLI::Validator Between(double least, double most) {
  return CLI::Validator(
      [least, most](const std::string& text) {
        double number = 0.0;
        const bool isIn = CLI::detail::lexical_cast(text, number) && number >= least && number <= most;
        return isIn ? std::string() : fmt::format("'{}' is no number from {} to {}", text, least, most);
      },
      fmt::format("{} to {}", least, most));
}

CLI::App* AddPlay(CLI::App& parent, Options& options) {
  CLI::App* play = parent.add_subcommand("play", "Play a tone of one second on a render endpoint");
  play->footer(kFurtherOptions);
  AddText(*play, "ENDPOINT", options.endpoint, "The render endpoint; without it the default one");
  return play;
}

CLI::App* AddRecord(CLI::App& parent, Options& options) {
  CLI::App* record =
      parent.add_subcommand("record", "Record from a capture endpoint and measure the largest amplitude");
  record->footer(kFurtherOptions);
  AddText(*record, "CAPTURE", options.endpoint, "The capture endpoint; without it the default one");
  AddText(*record, "--render", options.render,
          "The render endpoint that plays a tone meanwhile; without it the test listens for three seconds")
      ->option_text("ENDPOINT");
  const Limits usual = LimitsInForce({}, true);
  const auto addPeak = [&](const char* name, const char* which, std::optional<double>& peak, double otherwise) {
    record
        ->add_option(name, peak,
                     fmt::format("The {} peak that passes, 0 to 1; with --render {} when not given", which, otherwise))
        ->option_text("PEAK")
        ->check(Between(0, 1));
  };
  addPeak("--min-peak", "least", options.limits.minPeak, *usual.minPeak);
  addPeak("--max-peak", "largest", options.limits.maxPeak, *usual.maxPeak);
  AddText(*record, "--limits", options.limitsFile, "A file with limits, as 'rmthost limits' prints them")
      ->option_text("FILE");
  record
      ->add_flag("--require-listening", options.requireListening,
                 "Fail when the host can't listen beside the module and so can't tell whether it was the tone")
      ->disable_flag_override();
  return record;
}

void AddCommands(CLI::App& app, Options& options) {
  using Command = Options::Command;
  const auto answer = [&options](CLI::App* command, Command meaning, std::optional<Test> test = std::nullopt) {
    command->callback([&options, meaning, test] {
      options.command = meaning;
      if (test.has_value()) options.test = *test;
    });
  };
  const auto add = [&](Command command, const std::string& description) {
    CLI::App* added = app.add_subcommand(CommandWord(command), description);
    added->footer(kFurtherOptions);
    answer(added, command);
    return added;
  };
  add(Command::kList, "Show the endpoints");

  const auto addReport = [&](CLI::App& command) {
    AddText(command, "--report", options.report, kReportHelp)->option_text("FILE");
  };
  const auto addJunit = [&](CLI::App& command) {
    AddText(command, "--junit", options.junit, kJunitHelp)->option_text("FILE");
  };
  CLI::App* play = AddPlay(app, options);
  answer(play, Command::kPlay, Test::kPlay);
  addReport(*play);
  addJunit(*play);
  CLI::App* record = AddRecord(app, options);
  answer(record, Command::kRecord, Test::kRecord);
  AddText(*record, "--plot", options.plot, "Draw what was heard, waveform and spectrum, into an SVG file")
      ->option_text("FILE");
  addReport(*record);
  addJunit(*record);
  AddText(*record, "--save", options.save, "Write what was heard, all channels as they were captured, into a WAV file")
      ->option_text("FILE");
  record->add_flag("--no-plot", options.noPlot, "Draw nothing on the terminal")->disable_flag_override();
  record->add_flag("--plot-data", options.plotData, "Add to the JSON document what a drawing is made from")
      ->disable_flag_override();

  CLI::App* repeat = app.add_subcommand(CommandWord(Command::kRepeat), "Run a test several times and sum it up");
  repeat->footer(kFurtherOptions);
  repeat->add_option("-n,--runs", options.runs, "How many times; 10 when not given")
      ->option_text("N")
      ->check(CLI::Range(1, kMostRuns));
  repeat->add_flag("--fail-fast", options.failFast, "End at the first run that doesn't pass")->disable_flag_override();
  addJunit(*repeat);
  answer(AddPlay(*repeat, options), Command::kRepeat, Test::kPlay);
  answer(AddRecord(*repeat, options), Command::kRepeat, Test::kRecord);
  repeat->require_subcommand(1);

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

  CLI::App* limits = add(Command::kLimits, "Print the limits that a record test with a tone is held to, as JSON");
  AddText(*limits, "--limits", options.limitsFile, "A file with limits that are to be others")->option_text("FILE");
  CLI::App* restore =
      add(Command::kRestore, "Put back the settings that a test changed whose rmthost was killed or lost its power");
  restore->add_flag("--list", options.onlyList, "Show what is left to put back, and put nothing back")
      ->disable_flag_override();
  add(Command::kVersion, "Show the versions and files in use");

  CLI::App* help = app.add_subcommand(kHelpWord, "Show the help of rmthost or of a command");
  help->footer(kFurtherOptions);
  help->add_option("COMMAND", "The command; without it rmthost itself");

  CLI::App* completion = add(Command::kCompletion, "Print the script that lets a shell complete rmthost's commands");
  completion->add_option("SHELL", options.shell, "bash, zsh or fish")
      ->required()
      ->check(CLI::IsMember(std::vector<std::string>(kShellWords.begin(), kShellWords.end())));
}

void AddOptions(CLI::App& app, Options& options) {
  app.add_option("--platform", options.platform,
                 fmt::format("The audio platform: {}. 'auto' when not given", kPlatformHelp))
      ->option_text("NAME");
  AddText(app, "--module", options.module, "The test module; without it the one beside rmthost")->option_text("FILE");
  app.add_option(
         "--timeout", options.timeout,
         fmt::format("The module's time for one call, after which it is ended; {} when not given", kDefaultTimeout))
      ->option_text("SECONDS")
      ->check(Between(kShortestTimeout, kLongestTimeout));
  app.add_option_function<std::string>(
         "--color",
         [&options](const std::string& when) {
           options.colour = Colour(std::ranges::find(kColourWords, when) - kColourWords.begin());
         },
         "When to colour the text: auto, always or never; auto, when not given, where a terminal shows it")
      ->option_text("WHEN")
      ->check(CLI::IsMember(std::vector<std::string>(kColourWords.begin(), kColourWords.end())));
  app.add_option(
         "--wait", options.wait,
         fmt::format("How long to wait for another test of the same endpoints; {} when not given", kDefaultWait))
      ->option_text("SECONDS")
      ->check(Between(0, kLongestTimeout));
  app.add_flag("--json", options.json, "Write one JSON document to standard output, also for errors")
      ->disable_flag_override();
  app.add_flag("--quiet", options.quiet, "Print nothing but errors; the exit code tells")->disable_flag_override();
  app.add_flag("--verbose", options.verbose, "Show what the module wrote to its log during the test")
      ->disable_flag_override();
  // The last one, as what it shows depends on the options above. CLI11's own version flag would not wait for them.
  app.add_flag_function(
         "-V,--version", [](std::int64_t) { throw CLI::CallForVersion(); },
         "Show the versions and files in use, as the command version does")
      ->disable_flag_override();
}

// The command that the help was asked for.
HelpText HelpOf(const CLI::App& app) {
  const CLI::App* command = &app;
  std::string path;
  while (!command->get_subcommands().empty()) {
    path += (path.empty() ? "" : " ") + command->get_name();
    command = command->get_subcommands().front();
  }
  return {command->help(path)};
}

// What `rmthost help [COMMAND]` shows.
HelpText HelpAskedFor(const CLI::App& app, const CLI::App& help) {
  const CLI::Option& name = *help.get_option("COMMAND");
  // CLI11's help() of the whole would show that of the command that was parsed, which is this one.
  if (name.empty()) return {app.get_formatter()->make_help(&app, app.get_name(), CLI::AppFormatMode::Normal)};
  try {
    return {app.get_subcommand(name.as<std::string>())->help(app.get_name())};
  } catch (const CLI::OptionNotFound&) {
    throw UnknownCommand(app, "", name.as<std::string>());
  }
}

}  // namespace

void BuildCommandLine(CLI::App& app, Options& options) {
  app.name("rmthost");
  app.description(kDescription);
  // On every system "/x" is a path.
  app.allow_windows_style_options(false);
  // The options below are taken behind the command too.
  app.fallthrough();
  AddOptions(app, options);
  AddCommands(app, options);
  app.require_subcommand(1);
  app.footer(kExitCodesHelp);
}

std::variant<Options, HelpText> ParseCommandLine(std::vector<std::string> arguments) {
  Options options;
  CLI::App app;
  BuildCommandLine(app, options);

  // CLI11 takes the arguments from the end of the list.
  std::reverse(arguments.begin(), arguments.end());
  try {
    app.parse(std::move(arguments));
  } catch (const CLI::CallForHelp&) {
    return HelpOf(app);
  } catch (const CLI::CallForVersion&) {
    options.command = Options::Command::kVersion;
    return options;
  } catch (const CLI::ParseError& error) {
    throw UnusableCommandLine(app, error);
  }
  if (const CLI::App* help = app.get_subcommand(kHelpWord); help->parsed()) return HelpAskedFor(app, *help);
  return options;
}

bool HasFlag(const std::vector<std::string>& arguments, const std::string& flag) {
  const auto end = std::find(arguments.begin(), arguments.end(), "--");
  return std::find(arguments.begin(), end, flag) != end;
}

const char* CommandWord(Options::Command command) {
  switch (command) {
    case Options::Command::kList: return "list";
    case Options::Command::kPlay: return "play";
    case Options::Command::kRecord: return "record";
    case Options::Command::kRepeat: return "repeat";
    case Options::Command::kRun: return "run";
    case Options::Command::kCheck: return "check";
    case Options::Command::kLimits: return "limits";
    case Options::Command::kRestore: return "restore";
    case Options::Command::kVersion: return "version";
    case Options::Command::kCompletion: break;
  }
  return "completion";
}

}  // namespace host
