#include "logging/file_probe.h"

#include <system_error>

namespace logging {
namespace {

void RaiseIf(const std::error_code& error, const char* operation, const std::filesystem::path& path) {
  if (error) throw std::filesystem::filesystem_error(operation, path, error);
}

}  // namespace

std::uintmax_t FileSize(const std::filesystem::path& path) {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  RaiseIf(error, "file_size", path);
  return size;
}

void EnsureDirectory(const std::filesystem::path& path) {
  std::error_code error;
  std::filesystem::create_directory(path, error);
  RaiseIf(error, "create_directory", path);
}

}  // namespace logging
