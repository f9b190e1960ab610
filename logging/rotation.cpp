#include "logging/rotation.h"

#include <cstdint>
#include <cstdio>
#include <string_view>

#include "logging/file_probe.h"
#include "logging/log_file.h"
#include "logging/rotation_turn.h"

namespace logging {
namespace {

constexpr std::uintmax_t kMaxBytes = 5000000;
constexpr std::int32_t kMaxFiles = 50;

bool IsLarge(const std::string& path) { return SizeIfThere(path).value_or(0) > kMaxBytes; }

// A rotation calls this with every index from kMaxFiles down to 1, which moves each file up by one.
//
// Each step clears the place numbered kMaxFiles, so the file that the first step moves there is removed by the second,
// and the highest number that remains is kMaxFiles - 1. Failures of remove and rename are ignored, because programs of
// the framework that know of no turns may be rotating the same files. A live file that can't be moved is tried again
// with the next line.
void RotateStep(const std::string& path, std::int32_t index) {
  const std::string stem = path.substr(0, path.size() - std::string_view(kLogExtension).size());
  const auto numbered = [&](std::int32_t number) { return stem + "_" + std::to_string(number) + kLogExtension; };
  const std::string top = numbered(kMaxFiles);
  const std::string next = numbered(index + 1);
  const std::string current = numbered(index);
  const std::string previous = numbered(index - 1);
  if (Exists(top)) std::remove(top.c_str());
  if (Exists(current)) std::rename(current.c_str(), next.c_str());
  if (index == 1) {
    std::rename(path.c_str(), current.c_str());
  } else if (Exists(previous)) {
    std::rename(previous.c_str(), current.c_str());
  }
}

// Another process may have rotated the file between the first look and the turn.
void RotateUnlessDone(const std::string& path) {
  if (!IsLarge(path)) return;
  for (std::int32_t index = kMaxFiles; index >= 1; --index) RotateStep(path, index);
}

}  // namespace

void RotateIfLarge(const std::string& path) {
  if (IsLarge(path)) RotateInTurn(path, RotateUnlessDone);
}

}  // namespace logging
