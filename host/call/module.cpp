#include "host/call/module.h"

#include <fmt/core.h>

#include <cstdlib>
#include <memory>
#include <stdexcept>

#include "host/base/log_directory.h"
#include "host/base/system.h"
#include "text/input_file.h"
#include "text/utf.h"

namespace host {
namespace {

constexpr const char* kModuleAdvice = "Give the module's file with --module FILE.";

struct Free {
  void operator()(char16_t* text) const { std::free(text); }
};

LoadedLibrary Load(const std::filesystem::path& file) {
  std::error_code unknown;
  if (!std::filesystem::exists(file, unknown)) {
    throw Failure(ExitCode::kBroken, fmt::format("There is no module '{}'.", text::Utf8FromPath(file)), kModuleAdvice);
  }
  // The system would wait for whoever writes into a pipe.
  if (!std::filesystem::is_regular_file(file, unknown)) {
    throw Failure(ExitCode::kBroken,
                  fmt::format("'{}' can't be loaded: {}.", text::Utf8FromPath(file), text::kNoRegularFile),
                  kModuleAdvice);
  }
  // As it is loaded, the module looks where its log is to be.
  ChosenLog();
  try {
    return LoadedLibrary(file);
  } catch (const std::runtime_error& error) {
    throw Failure(ExitCode::kBroken, fmt::format("'{}' can't be loaded: {}.", text::Utf8FromPath(file), error.what()),
                  kModuleAdvice);
  }
}

}  // namespace

std::filesystem::path DefaultModuleFile() {
  const std::filesystem::path program = ProgramFile().parent_path();
  const std::filesystem::path places[] = {
      (program / ".." / "lib" / ZQRMT_MODULE_FILE).lexically_normal(),
      (program / ".." / ZQRMT_MODULE_FOLDER / ZQRMT_MODULE_FILE).lexically_normal(),
      program / ZQRMT_MODULE_FILE,
  };
  for (const std::filesystem::path& place : places) {
    std::error_code unknown;
    if (std::filesystem::exists(place, unknown)) return place;
  }
  return places[0];
}

std::filesystem::path LogFile() { return ChosenLog().directory / kLogFileName; }

Failure UnreadableReply() {
  return {ExitCode::kBroken, "The module's reply isn't a data contract with an outcome.",
          "Check with 'rmthost version' that this is the right module."};
}

Module::Module(const std::filesystem::path& file)
    : library_(Load(file)), play_(Find(file, "AudioPlaybackTest")), record_(Find(file, "AudioRecordTest")) {}

Module::Export Module::Find(const std::filesystem::path& file, const char* name) const {
  void* address = library_.Symbol(name);
  if (address == nullptr) {
    throw Failure(ExitCode::kBroken,
                  fmt::format("'{}' is no audio test module: it doesn't export {}.", text::Utf8FromPath(file), name),
                  kModuleAdvice);
  }
  return reinterpret_cast<Export>(address);
}

std::string Module::Call(Test test, const std::string& contract) const {
  const Export run = test == Test::kPlay ? play_ : record_;
  const std::unique_ptr<char16_t, Free> reply(run(text::ToUtf16(contract).c_str()));
  if (reply == nullptr) {
    throw Failure(ExitCode::kBroken, "The module gave no reply.",
                  fmt::format("Check that the log directory '{}' is a directory that can be created, read and written.",
                              text::Utf8FromPath(ChosenLog().directory)));
  }
  return text::ToUtf8(reply.get());
}

}  // namespace host
