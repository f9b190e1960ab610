#include "host/shell/completion.h"

#include <fmt/core.h>

#include <CLI/CLI.hpp>

#include "host/endpoints/endpoints.h"
#include "host/endpoints/platform.h"
#include "host/shell/command_line.h"
#include "text/fold_case.h"
#include "text/utf.h"

namespace host {
namespace {

bool TakesValue(const CLI::Option& option) { return option.get_items_expected_max() > 0; }

bool IsShown(const CLI::Option& option) { return !option.get_group().empty(); }

// The option that `name` means behind `command`: its own, or one of the commands around it.
const CLI::Option* FindOption(const CLI::App* command, const std::string& name) {
  for (; command != nullptr; command = command->get_parent()) {
    for (const CLI::Option* option : command->get_options()) {
      if (option->nonpositional() && option->check_name(name)) return option;
    }
  }
  return nullptr;
}

const CLI::App* FindCommand(const CLI::App& parent, const std::string& name) {
  const auto found = parent.get_subcommands([&](const CLI::App* command) { return command->check_name(name); });
  return found.empty() ? nullptr : found.front();
}

// The help's description up to the first mark that ends a thought.
std::string Short(const std::string& description) { return description.substr(0, description.find_first_of(";:\n")); }

// Where the word stands that is completed, as the words before it tell.
struct Place {
  const CLI::App* command;              // the innermost one so far
  const CLI::Option* option = nullptr;  // whose value the word is
  std::size_t arguments = 0;            // of the command, so far
  bool optionsEnded = false;            // by "--"
  std::string platform = "auto";
};

void PassValue(Place& place, const std::string& value) {
  if (place.option->check_name("--platform")) place.platform = value;
  place.option = nullptr;
}

void PassOption(Place& place, const std::string& word) {
  const std::size_t equals = word.find('=');
  const CLI::Option* option = FindOption(place.command, word.substr(0, equals));
  if (option == nullptr || !TakesValue(*option)) return;
  place.option = option;
  if (equals != std::string::npos) PassValue(place, word.substr(equals + 1));
}

void Pass(Place& place, const std::string& word) {
  if (place.option != nullptr) return PassValue(place, word);
  if (place.optionsEnded) {
    ++place.arguments;
  } else if (word == "--") {
    place.optionsEnded = true;
  } else if (word.starts_with('-') && word != "-") {
    PassOption(place, word);
  } else if (const CLI::App* command = FindCommand(*place.command, word)) {
    place.command = command;
  } else {
    ++place.arguments;
  }
}

// Collects the lines for the candidates of one word.
class Lines {
 public:
  // `before` is the part of the word that is settled, such as "--render="; `typed` is the rest.
  Lines(std::string before, std::string typed) : before_(std::move(before)), typed_(std::move(typed)) {}

  void Offer(const std::string& candidate, const std::string& description = "") {
    if (text::LowerAscii(candidate).starts_with(text::LowerAscii(typed_))) Add(candidate, description);
  }
  // A piece from the middle names an endpoint too, and fish completes one.
  void OfferByPiece(const std::string& candidate, const std::string& description) {
    if (text::FoldCase(candidate).find(text::FoldCase(typed_)) != std::string::npos) Add(candidate, description);
  }
  void AskForFile(const std::string& beforeFile) { text_ = "\tfile\t" + before_ + beforeFile + "\n"; }

  const std::string& Typed() const { return typed_; }
  const std::string& Text() const { return text_; }

 private:
  void Add(const std::string& candidate, const std::string& description) {
    // A line feed or a tab would break the lines, and others could steer the terminal.
    if (candidate.empty() || text::Printable(candidate) != candidate) return;
    text_ += before_ + candidate + (description.empty() ? "" : "\t" + text::Printable(description)) + "\n";
  }

  std::string before_, typed_, text_;
};

void OfferPlatforms(Lines& lines) {
  constexpr const char* kMachineFile = "virtual:";
  if (lines.Typed().starts_with(kMachineFile)) return lines.AskForFile(kMachineFile);
  for (const char* name : {"auto", kSystemPlatform, "virtual", kMachineFile}) lines.Offer(name);
}

// `isArgument`: where a leading dash would make an option of the name.
void OfferEndpoints(Lines& lines, Flow flow, const std::string& asked, bool isArgument) {
  const Platform platform(ChoosePlatform(asked));
  const auto offer = [&](const std::string& candidate, const std::string& description) {
    if (!isArgument || !candidate.starts_with('-')) lines.OfferByPiece(candidate, description);
  };
  for (const Endpoint& endpoint : ReadEndpoints()) {
    if (endpoint.flow != flow || endpoint.state != EndpointState::kActive) continue;
    offer(endpoint.name, endpoint.id);
    if (endpoint.id != endpoint.name) offer(endpoint.id, endpoint.name);
  }
}

void OfferCommands(Lines& lines, const CLI::App& parent) {
  const auto isShown = [](const CLI::App* command) { return !command->get_group().empty(); };
  for (const CLI::App* command : parent.get_subcommands(isShown)) {
    lines.Offer(command->get_name(), Short(command->get_description()));
  }
}

// The help's word for a value says what kind it is of.
void OfferValues(Lines& lines, const CLI::Option& option, const Place& place) {
  const bool isArgument = option.get_positional();
  const std::string kind = isArgument ? option.get_name() : option.get_option_text();
  if (kind == "FILE" || kind == "CONTRACT") lines.AskForFile("");
  if (kind == "NAME") OfferPlatforms(lines);
  if (kind == "TEST")
    for (const char* word : kTestWords) lines.Offer(word);
  if (kind == "WHEN")
    for (const std::string_view word : kColourWords) lines.Offer(std::string(word));
  if (kind == "COMMAND") OfferCommands(lines, *place.command->get_parent());
  if (kind == "SHELL")
    for (const char* word : kShellWords) lines.Offer(word);
  if (kind == "ENDPOINT" || kind == "CAPTURE") {
    OfferEndpoints(lines, kind == "ENDPOINT" ? Flow::kRender : Flow::kCapture, place.platform,
                   isArgument && !place.optionsEnded);
  }
}

void OfferOptions(Lines& lines, const Place& place) {
  for (const CLI::App* command = place.command; command != nullptr; command = command->get_parent()) {
    for (const CLI::Option* option : command->get_options()) {
      if (!IsShown(*option)) continue;
      for (const std::string& name : option->get_snames()) {
        if (FindOption(place.command, "-" + name) == option) lines.Offer("-" + name, Short(option->get_description()));
      }
      for (const std::string& name : option->get_lnames()) {
        if (FindOption(place.command, "--" + name) == option)
          lines.Offer("--" + name, Short(option->get_description()));
      }
    }
  }
}

void OfferCommandsAndArguments(Lines& lines, const Place& place) {
  if (!place.optionsEnded) OfferCommands(lines, *place.command);
  const auto isArgument = [](const CLI::Option* option) { return option->get_positional(); };
  const std::vector<const CLI::Option*> arguments = place.command->get_options(isArgument);
  if (place.arguments < arguments.size()) OfferValues(lines, *arguments[place.arguments], place);
}

std::string CandidatesFor(std::vector<std::string> words) {
  Options options;
  CLI::App app;
  BuildCommandLine(app, options);
  const std::string word = words.empty() ? "" : words.back();
  if (!words.empty()) words.pop_back();

  Place place{.command = &app};
  for (const std::string& passed : words) Pass(place, passed);

  const std::size_t equals = word.find('=');
  const bool isOption = place.option == nullptr && !place.optionsEnded && word.starts_with('-');
  if (isOption && equals != std::string::npos) {
    Lines lines(word.substr(0, equals + 1), word.substr(equals + 1));
    const CLI::Option* option = FindOption(place.command, word.substr(0, equals));
    if (option != nullptr && TakesValue(*option)) OfferValues(lines, *option, place);
    return lines.Text();
  }
  Lines lines("", word);
  if (isOption) {
    OfferOptions(lines, place);
  } else if (place.option != nullptr) {
    OfferValues(lines, *place.option, place);
  } else {
    OfferCommandsAndArguments(lines, place);
  }
  return lines.Text();
}

}  // namespace

std::string Candidates(const std::vector<std::string>& words) noexcept {
  try {
    return CandidatesFor(words);
  } catch (...) {
    // An error in the middle of a line that is being typed would be in the way.
    return "";
  }
}

}  // namespace host
