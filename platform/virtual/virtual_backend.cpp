#include "platform/virtual/virtual_backend.h"

#include <cstddef>

#include "platform/virtual/built_in_machine.h"
#include "platform/virtual/description.h"
#include "platform/virtual/machine.h"
#include "text/input_file.h"
#include "text/utf.h"

namespace virtual_audio {

namespace {

constexpr std::size_t kMostBytes = std::size_t{16} << 20;

std::string ContentsOf(const std::string& file) {
  const text::FileBytes contents = text::ReadRegularFile(text::PathFromUtf8(file), 0, kMostBytes);
  if (!contents.problem.empty()) {
    throw platform::PlatformError('"' + file + "\" can't be read: " + contents.problem + '.');
  }
  if (contents.isCut) throw platform::PlatformError('"' + file + "\" is larger than 16 MiB, and isn't read.");
  return contents.bytes;
}

}  // namespace

std::unique_ptr<platform::Backend> OpenMachine(const std::optional<std::string>& file) {
  return std::make_unique<Machine>(ParseDescription(file ? ContentsOf(*file) : kBuiltInMachine));
}

}  // namespace virtual_audio
