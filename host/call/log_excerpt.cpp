#include "host/call/log_excerpt.h"

#include <fstream>
#include <utility>

namespace host {
namespace {

std::uintmax_t SizeOf(const std::filesystem::path& file) {
  std::error_code missing;
  const std::uintmax_t size = std::filesystem::file_size(file, missing);
  return missing ? 0 : size;
}

void AppendLines(const std::filesystem::path& file, std::uintmax_t start, std::vector<std::string>& lines) {
  std::ifstream log(file, std::ios::binary);
  log.seekg(static_cast<std::streamoff>(start));
  for (std::string line; std::getline(log, line);) {
    if (line.ends_with('\r')) line.pop_back();
    lines.push_back(std::move(line));
  }
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
