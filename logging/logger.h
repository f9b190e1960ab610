#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "logging/log_level.h"
#include "logging/log_record.h"
#include "logging/message_text.h"

namespace logging {

// The log of one source. Loggers of this and of other processes append to one file, which each line opens and closes.
//
// Logging has no failure result: a message that is rejected, or that can't be written, is dropped. The one thing raised
// is the std::filesystem::filesystem_error of a failing probe, named "exists" or "file_size".
//
// Not guarded: a logger belongs to the one thread that uses it.
class Logger {
 public:
  // Component numbers are 0 or have eight digits with the last six 0; they become the second and third digit of codes.
  // The file is the default one, ZQRMLOG.LOG in the log directory, unless the redirect file there holds another
  // directory; ".." in it means the default too. Raises "exists" when the redirect file can't be looked for.
  Logger(std::string sourceName, std::int32_t componentNumber);

  // Writes to the file that SetLogFile makes of logFile, and doesn't look at the redirect file.
  Logger(std::string sourceName, std::string logFile, std::int32_t componentNumber);

  // Each writes a message at its level, with `percent` in front of the text when it is above 0. An id below 100000000
  // becomes a nine-digit code: the level's digit, the component's two, the id's six; any other id is the code already.
  //
  // Returns the logger's record, valid until its next message. For a message below the active level that is still the
  // last accepted message, or an empty one.
  const LogRecord* LogCritical(std::int32_t id, MessageText text, double percent) {
    return Log(kCritical, id, text, percent);
  }
  const LogRecord* LogError(std::int32_t id, MessageText text, double percent) {
    return Log(kError, id, text, percent);
  }
  const LogRecord* LogWarning(std::int32_t id, MessageText text, double percent) {
    return Log(kWarning, id, text, percent);
  }
  const LogRecord* LogNotification(std::int32_t id, MessageText text, double percent) {
    return Log(kNotification, id, text, percent);
  }
  const LogRecord* LogNormal(std::int32_t id, MessageText text, double percent) {
    return Log(kNormal, id, text, percent);
  }
  const LogRecord* LogTest1(std::int32_t id, MessageText text, double percent) {
    return Log(kTest1, id, text, percent);
  }
  const LogRecord* LogDebug1(std::int32_t id, MessageText text, double percent) {
    return Log(kDebug1, id, text, percent);
  }
  const LogRecord* LogDebug2(std::int32_t id, MessageText text, double percent) {
    return Log(kDebug2, id, text, percent);
  }
  const LogRecord* LogDebug3(std::int32_t id, MessageText text, double percent) {
    return Log(kDebug3, id, text, percent);
  }

  // As above, and first prints the text to standard output, with no line end. Passes every filter.
  const LogRecord* LogConsole(std::int32_t id, MessageText text, double percent);

  // Reports how far a step has come: `completed` of `total`, in the band of the whole scale that begins at `start`
  // percent and is `span` percent wide. Never shows more than the band's end.
  void LogProgress(double completed, double total, double span, double start);

  // Forces the active level, kDebug3 to kConsole; -1 leaves it to the flag files again. Other numbers are ignored.
  void SetLevel(std::int32_t level);

  // The level in force: the one forced by SetLevel, else that of FlaggedLevel. A message below it is rejected.
  std::int32_t GetActiveLevel() const;

  // Sets the log file: a path, or a bare name in the log directory, made a log's name by NormalizeLogName. "nolog"
  // switches writing off; messages are then only recorded. An empty text changes nothing.
  void SetLogFile(std::string logFile);

  // The log file's path, or "nolog".
  const std::string& Path() const { return path; }

 private:
  const LogRecord* Log(LogLevel level, std::int32_t id, MessageText text, double percent);
  // `data`, a block of malloc or null, goes over to the record when the message is accepted.
  const LogRecord* WriteMessage(const std::string& source, std::int32_t code, MessageText text, LogLevel level,
                                double percent, void* data, std::string dataType);
  void WriteLine() const;
  void RotateStep(std::int32_t index) const;

  std::string name;
  std::unique_ptr<LogRecord> record = std::make_unique<LogRecord>();  // reused by every message
  std::string path;
  std::int32_t levelOverride = -1;
  std::int32_t maxFiles = 50;
  std::int32_t maxBytes = 5000000;
  std::string redirectFile = "zqlgrphf.lef";
  std::int32_t componentBase;
};

}  // namespace logging
