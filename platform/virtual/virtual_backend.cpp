#include "platform/virtual/virtual_backend.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "platform/virtual/built_in_machine.h"
#include "platform/virtual/description.h"
#include "platform/virtual/machine.h"

namespace virtual_audio {

namespace {

std::string ContentsOf(const std::string& file) {
  errno = 0;
  // A path made of UTF-8 on every system.
  std::ifstream stream(std::filesystem::path(std::u8string(file.begin(), file.end())), std::ios::binary);
  std::string contents;
  char chunk[4096];
  while (stream.read(chunk, sizeof chunk), stream.gcount() > 0) {
    contents.append(chunk, static_cast<std::size_t>(stream.gcount()));
  }
  if (!stream.eof()) {
    throw platform::PlatformError('"' + file + "\" can't be read: " + std::generic_category().message(errno));
  }
  return contents;
}

}  // namespace

std::unique_ptr<platform::Backend> OpenMachine(const std::optional<std::string>& file) {
  return std::make_unique<Machine>(ParseDescription(file ? ContentsOf(*file) : kBuiltInMachine));
}

}  // namespace virtual_audio
