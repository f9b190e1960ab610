#include "host/call/log_excerpt.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "text/input_file.h"

namespace host {
namespace {

std::uintmax_t SizeOf(const std::filesystem::path& file) {
  std::error_code missing;
  const std::uintmax_t size = std::filesystem::file_size(file, missing);
  return missing ? 0 : size;
}

// More than a log grows to before it is rotated.
constexpr std::size_t kMostBytes = std::size_t{8} << 20;

void AppendLines(const std::filesystem::path& file, std::uintmax_t start, std::vector<std::string>& lines) {
  const text::FileBytes log = text::ReadRegularFile(file, start, kMostBytes);
  for (std::string_view rest = log.bytes; !rest.empty();) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    std::string_view line = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    if (line.ends_with('\r')) line.remove_suffix(1);
    lines.emplace_back(line);
  }
  if (log.isCut) lines.emplace_back("(The log goes on; no more than 8 MiB of it are shown.)");
}

}  // namespace

LogExcerpt::LogExcerpt(std::filesystem::path logFile) : logFile_(std::move(logFile)), start_(SizeOf(logFile_)) {}

std::vector<std::string> LogExcerpt::Lines() const {
  std::vector<std::string> lines;
  if (SizeOf(logFile_) >= start_) {
    AppendLines(logFile_, start_, lines);
    return lines;
  }
  // The file of this name is a new one, and the one that was it is called ZQRMLOG_1.LOG now.
  std::filesystem::path rotated = logFile_;
  rotated.replace_filename(logFile_.stem().string() + "_1" + logFile_.extension().string());
  AppendLines(rotated, start_, lines);
  AppendLines(logFile_, 0, lines);
  return lines;
}

}  // namespace host
