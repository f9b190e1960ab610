#include "platform/virtual/virtual_backend.h"

#include <cerrno>
#include <fstream>
#include <system_error>

#include "platform/virtual/built_in_machine.h"
#include "platform/virtual/description.h"
#include "platform/virtual/machine.h"
#include "text/utf.h"

namespace virtual_audio {

namespace {

std::string ContentsOf(const std::string& file) {
  errno = 0;
  std::ifstream stream(text::PathFromUtf8(file), std::ios::binary);
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
