#include "platform/backends.h"

#include <optional>
#include <string_view>
#include <vector>

#include "platform/virtual/virtual_backend.h"
#ifndef _WIN32
#include "platform/pulse/sound_server.h"
#endif

namespace platform {

namespace {

struct BackendEntry {
  std::string_view name;
  std::string_view takes;  // what may follow the name and a colon, as the documentation calls it
  // Gets what follows the colon, or nothing without one. Throws PlatformError and std::bad_alloc.
  std::unique_ptr<Backend> (*open)(const std::optional<std::string>& argument);
};

constexpr BackendEntry kBackends[] = {
    {"virtual", "FILE", &virtual_audio::OpenMachine},
#ifndef _WIN32
    {"pulse", "SERVER", &pulse_audio::OpenSoundServer},
#endif
};

std::string ListOfBackends() {
  std::vector<std::string> names;
  for (const BackendEntry& backend : kBackends) {
    const std::string name(backend.name);
    names.push_back('"' + name + '"');
    names.push_back('"' + name + ':' + std::string(backend.takes) + '"');
  }
  std::string list = names.front();
  for (std::size_t i = 1; i < names.size(); ++i) list += (i + 1 < names.size() ? ", " : " and ") + names[i];
  return list;
}

}  // namespace

std::unique_ptr<Backend> OpenBackend(const std::string& description) {
  const std::size_t colon = description.find(':');
  const std::string_view name = std::string_view(description).substr(0, colon);
  const auto argument = colon == description.npos ? std::nullopt : std::optional(description.substr(colon + 1));
  for (const BackendEntry& backend : kBackends) {
    if (backend.name == name) return backend.open(argument);
  }
  throw PlatformError("There is no audio platform \"" + description + "\"; there are " + ListOfBackends() + '.');
}

}  // namespace platform
