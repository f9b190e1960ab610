#include "host/base/output_file.h"

#include <fmt/core.h>

#include <random>
#include <utility>

#include "host/base/new_file.h"
#include "text/utf.h"

namespace host {
namespace {

namespace fs = std::filesystem;

// 64 random bits: whoever else may write to the folder can't be there first.
fs::path UnforeseenNameBeside(const fs::path& target) {
  std::random_device random;
  return target.parent_path() / fmt::format("rmthost-{:08x}{:08x}.part", random(), random());
}

}  // namespace

OutputFile::OutputFile(std::string name, const std::string& ending, const std::string& option)
    : name_(std::move(name)), target_(text::PathFromUtf8(name_)) {
  const auto refuse = [&](const std::string& reason, const std::string& advice) {
    throw Failure(ExitCode::kBadInput, fmt::format("'{}' of {} {}.", name_, option, reason), advice);
  };
  if (text::LowerAscii(text::Utf8FromPath(target_.extension())) != ending) {
    refuse(fmt::format("doesn't end in {}", ending), fmt::format("Name a file such as 'result{}'.", ending));
  }
  std::error_code error;
  const fs::file_status standing = fs::symlink_status(target_, error);
  if (!fs::status_known(standing)) refuse("can't be: " + error.message(), "Name another file.");
  if (fs::exists(standing) && !fs::is_regular_file(standing)) {
    refuse("is there, and is no file",
           "Name a new file or one to be replaced; a folder, a device, a pipe or a link isn't replaced.");
  }
  const fs::path folder = target_.has_parent_path() ? target_.parent_path() : fs::path(".");
  if (!fs::is_directory(folder, error)) refuse("is in a folder that isn't there", "Make the folder first.");
  temporary_ = UnforeseenNameBeside(target_);
  error = MakeNewFile(temporary_);
  if (error) {
    refuse(fmt::format("is in a folder that takes no new file: {}", error.message()),
           "Name a file in a folder that you can write to.");
  }
}

OutputFile::~OutputFile() {
  std::error_code ignored;
  if (!temporary_.empty()) fs::remove(temporary_, ignored);
}

std::string OutputFile::Temporary() const { return text::Utf8FromPath(temporary_); }

Failure OutputFile::NotWritten(const std::string& reason) const {
  return {ExitCode::kBroken, fmt::format("'{}' can't be written: {}.", name_, reason),
          "Make room there, or name a file in another folder."};
}

void OutputFile::Write(std::string_view content) const {
  if (const std::error_code error = OverwriteFile(temporary_, content)) throw NotWritten(error.message());
}

void OutputFile::Commit() {
  std::error_code error;
  fs::rename(temporary_, target_, error);
  if (error) throw NotWritten(error.message());
  temporary_.clear();
}

}  // namespace host
