#include "host/contract/contract_file.h"

#include <fmt/format.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>

#include "text/utf.h"

namespace host {
namespace {

constexpr const char* kFileAdvice = "Give the file of a data contract, or - for standard input.";

std::string ReadAll(std::istream& stream) {
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::string ReadBytes(const std::string& name, const std::string& advice) {
  if (name == "-") return ReadAll(std::cin);
  const std::filesystem::path path = text::PathFromUtf8(name);
  std::error_code unknown;
  if (!std::filesystem::exists(path, unknown)) {
    throw Failure(ExitCode::kBadInput, fmt::format("There is no file '{}'.", name), advice);
  }
  std::ifstream file(path, std::ios::binary);
  // A directory can be opened on some systems, and never read.
  if (std::filesystem::is_directory(path, unknown) || !file.is_open()) {
    throw Failure(ExitCode::kBadInput, fmt::format("'{}' can't be read.", name), advice);
  }
  return ReadAll(file);
}

}  // namespace

std::string ReadTextFile(const std::string& name, const std::string& kind, const std::string& advice) {
  std::optional<std::string> text = text::DecodeText(ReadBytes(name, advice));
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

std::string ReadContract(const std::string& name) { return ReadTextFile(name, "contract", kFileAdvice); }

Failure NotJson(const std::string& name, const JsonFault& fault, const std::string& advice) {
  return {
      ExitCode::kBadInput,
      fmt::format("The contract '{}' isn't JSON: line {}, column {}: {}", name, fault.line, fault.column, fault.reason),
      advice};
}

}  // namespace host
