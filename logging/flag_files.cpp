#include "logging/flag_files.h"

#include <array>
#include <filesystem>
#include <string>

#include "logging/file_probe.h"
#include "logging/log_directory.h"
#include "logging/log_level.h"

namespace logging {
namespace {

using FlagFiles = std::array<std::filesystem::path, kConsole>;  // by level; kConsole has none

FlagFiles MakeFlagFiles() {
  FlagFiles files;
  std::int32_t level = kDebug3;
  for (std::filesystem::path& file : files) file = GetLogDirectory().File(std::string(LevelName(level++)) + ".flg");
  return files;
}

}  // namespace

std::int32_t FlaggedLevel() {
  static const FlagFiles files = MakeFlagFiles();
  std::int32_t level = kDebug3;
  for (const std::filesystem::path& file : files) {
    if (Exists(file)) return level;
    ++level;
  }
  return kNormal;
}

}  // namespace logging
