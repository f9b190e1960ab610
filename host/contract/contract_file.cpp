#include "host/contract/contract_file.h"

#include <fmt/core.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <utility>

#include "text/input_file.h"
#include "text/utf.h"

namespace host {
namespace {

constexpr const char* kFileAdvice = "Give the file of a data contract, or - for standard input.";

// Ten times the largest contract that was ever measured.
constexpr std::size_t kMostContractMiB = 256;

text::FileBytes ReadStandardInput(std::size_t most) {
  text::FileBytes input;
  char chunk[16384];
  for (std::size_t got; !input.isCut && (got = std::fread(chunk, 1, sizeof chunk, stdin)) > 0;) {
    const std::size_t taken = std::min(got, most - input.bytes.size());
    input.bytes.append(chunk, taken);
    input.isCut = taken < got;
  }
  return input;
}

std::string ReadBytes(const std::string& name, const std::string& kind, std::size_t mostMiB,
                      const std::string& advice) {
  const std::size_t most = mostMiB << 20;
  const std::filesystem::path path = text::PathFromUtf8(name);
  std::error_code unknown;
  if (name != "-" && !std::filesystem::exists(path, unknown)) {
    throw Failure(ExitCode::kBadInput, fmt::format("There is no file '{}'.", name), advice);
  }
  text::FileBytes input = name == "-" ? ReadStandardInput(most) : text::ReadRegularFile(path, 0, most);
  if (!input.problem.empty()) {
    throw Failure(ExitCode::kBadInput, fmt::format("'{}' can't be read: {}.", name, input.problem), advice);
  }
  if (input.isCut) {
    throw Failure(ExitCode::kBadInput,
                  fmt::format("The {} '{}' is larger than {} MiB, and isn't read.", kind, name, mostMiB), advice);
  }
  return std::move(input.bytes);
}

}  // namespace

std::string ReadTextFile(const std::string& name, const std::string& kind, std::size_t mostMiB,
                         const std::string& advice) {
  std::optional<std::string> text = text::DecodeText(ReadBytes(name, kind, mostMiB, advice));
  if (!text.has_value()) {
    throw Failure(ExitCode::kBadInput, fmt::format("The {} '{}' isn't valid UTF-8.", kind, name),
                  "Save it as UTF-8, or as UTF-16LE with a byte order mark.");
  }
  if (text->find('\0') != std::string::npos) {
    throw Failure(ExitCode::kBadInput,
                  fmt::format("The {} '{}' holds a NUL character, at which reading would stop.", kind, name),
                  "Save it as UTF-8, or as UTF-16LE with a byte order mark.");
  }
  return *std::move(text);
}

std::string ReadContract(const std::string& name) {
  return ReadTextFile(name, "contract", kMostContractMiB, kFileAdvice);
}

Failure NotJson(const std::string& name, const JsonFault& fault, const std::string& advice) {
  return {
      ExitCode::kBadInput,
      fmt::format("The contract '{}' isn't JSON: line {}, column {}: {}", name, fault.line, fault.column, fault.reason),
      advice};
}

}  // namespace host
