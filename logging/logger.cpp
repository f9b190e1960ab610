#include "logging/logger.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <utility>

#include "logging/file_probe.h"
#include "logging/flag_files.h"
#include "logging/local_time.h"
#include "logging/log_directory.h"
#include "logging/log_file.h"
#include "logging/rotation.h"

namespace logging {
namespace {

constexpr char kNoLog[] = "nolog";
constexpr char kRedirectFile[] = "zqlgrphf.lef";

std::string CurrentTimeText() {
  return LocalTimeText(std::chrono::system_clock::to_time_t(std::chrono::system_clock::now()));
}

}  // namespace

Logger::Logger(std::string sourceName, std::int32_t componentNumber)
    : name(std::move(sourceName)), componentBase(componentNumber) {
  const LogDirectory& directory = GetLogDirectory();
  const std::string redirectPath = directory.File(kRedirectFile);
  if (!Exists(redirectPath)) {
    SetLogFile(directory.File(kDefaultLogName));
    return;
  }
  const std::string contents = ReadWholeFile(redirectPath);
  path = (contents == ".." ? directory.path : contents) + directory.separator + kDefaultLogName;
}

Logger::Logger(std::string sourceName, std::string logFile, std::int32_t componentNumber)
    : name(std::move(sourceName)), componentBase(componentNumber) {
  SetLogFile(std::move(logFile));
}

const LogRecord* Logger::LogConsole(std::int32_t id, MessageText text, double percent) {
  const std::string made = text.Make();
  std::fwrite(made.data(), 1, made.size(), stdout);
  return Log(kConsole, id, made, percent);
}

void Logger::LogProgress(double completed, double total, double span, double start) {
  const double share = (completed / total * 100.0) / (100.0 / span) + start;
  const double ceiling = span + start;
  LogNormal(2, "Progress completed", std::min(share, ceiling));
}

void Logger::SetLevel(std::int32_t level) {
  if (level >= -1 && level <= kConsole) levelOverride = level;
}

std::int32_t Logger::GetActiveLevel() const { return levelOverride != -1 ? levelOverride : FlaggedLevel(); }

void Logger::SetLogFile(std::string logFile) {
  if (logFile.empty()) return;
  if (logFile == kNoLog) {
    path = kNoLog;
    return;
  }
  const LogDirectory& directory = GetLogDirectory();
  if (logFile.find(directory.separator) == std::string::npos) logFile = directory.File(logFile);
  path = NormalizeLogName(std::move(logFile));
}

const LogRecord* Logger::Log(LogLevel level, std::int32_t id, MessageText text, double percent) {
  // No level is above kConsole: such a message passes both looks at the filter, but their probes can fail for it too.
  if (GetActiveLevel() > level) return &record;
  record.source = name;
  record.code = std::to_string(MessageCode(level, componentBase, id));
  record.text = text.Make();
  record.level = level;
  record.timeStamp = CurrentTimeText();
  record.percent = percent;
  // A flag file that came or went since the first look decides whether the line is written, not what is recorded.
  if (GetActiveLevel() <= level && path != kNoLog) WriteLine();
  return &record;
}

void Logger::WriteLine() const {
  RotateIfLarge(path);
  AppendLine(path, LogLine(record));
}

}  // namespace logging
