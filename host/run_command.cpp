#include <fmt/format.h>

#include <fstream>
#include <iostream>
#include <iterator>

#include "host/commands.h"
#include "host/json_output.h"
#include "host/platform.h"
#include "host/system.h"
#include "host/test_report.h"
#include "host/utf.h"

namespace host {
namespace {

constexpr const char* kFileAdvice = "Give the file of a data contract, or - for standard input.";

std::string ReadAll(std::istream& stream) {
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::string ReadBytes(const std::string& name) {
  if (name == "-") return ReadAll(std::cin);
  const std::filesystem::path path = PathFromUtf8(name);
  std::error_code unknown;
  if (!std::filesystem::exists(path, unknown)) {
    throw Failure(ExitCode::kBadInput, fmt::format("There is no file '{}'.", name), kFileAdvice);
  }
  std::ifstream file(path, std::ios::binary);
  // A directory can be opened on some systems, and never read.
  if (std::filesystem::is_directory(path, unknown) || !file.is_open()) {
    throw Failure(ExitCode::kBadInput, fmt::format("'{}' can't be read.", name), kFileAdvice);
  }
  return ReadAll(file);
}

std::string ReadContract(const std::string& name) {
  std::optional<std::string> text = DecodeText(ReadBytes(name));
  if (!text.has_value()) {
    throw Failure(ExitCode::kBadInput, fmt::format("The contract '{}' isn't valid UTF-8.", name),
                  "Save it as UTF-8, or as UTF-16LE with a byte order mark.");
  }
  if (text->find('\0') != std::string::npos) {
    throw Failure(ExitCode::kBadInput,
                  fmt::format("The contract '{}' holds a NUL character, at which the module would stop reading.", name),
                  "Save it as UTF-8, or as UTF-16LE with a byte order mark.");
  }
  return *std::move(text);
}

}  // namespace

Answer RunContract(const Options& options, const Style& style) {
  const std::string contract = ReadContract(options.contract);
  const Platform platform(options.platform);
  const Module module(options.module ? PathFromUtf8(*options.module) : DefaultModuleFile());
  const std::string reply = CallModule(module, options.test, contract, options.quiet);
  const std::optional<Outcome> outcome = ReadReply(reply);

  Answer answer;
  answer.text = reply;
  if (style.terminal) answer.text += '\n';
  if (outcome.has_value()) {
    answer.exitCode = ExitCodeOf(options.test, *outcome);
    JsonMembers members = OutcomeMembers(options.test, *outcome, reply);
    members.emplace_back("test", JsonString(options.test == Test::kPlay ? "play" : "record"));
    answer.result = JsonObject(members);
  } else {
    answer.failure = UnreadableReply();
  }
  // The module answers any text; what is wrong with this one, only the host says.
  if (const std::optional<JsonFault> fault = FindJsonFault(contract)) {
    answer.failure = Failure(ExitCode::kBadInput,
                             fmt::format("The contract '{}' isn't JSON: line {}, column {}: {}", options.contract,
                                         fault->line, fault->column, fault->reason),
                             "Correct it there; the module's answer to it as it is was given all the same.");
  }
  if (answer.failure.has_value()) answer.exitCode = answer.failure->exitCode;
  return answer;
}

}  // namespace host
