#include "logging/file_probe.h"

namespace logging {

bool Exists(const std::filesystem::path& path) {
  std::error_code error;
  const bool found = std::filesystem::exists(path, error);
  if (error) throw std::filesystem::filesystem_error("exists", path, error);
  return found;
}

}  // namespace logging
