#pragma once

#include <cstdint>
#include <string>

#include "logging/log_level.h"
#include "logging/log_record.h"
#include "logging/message_text.h"

namespace logging {

// The log of one source. Loggers of this and of other processes append to one file, which each line opens and closes.
//
// Logging has no failure result: a message that is rejected, or that can't be written, is dropped. The one exception is
// the std::filesystem::filesystem_error of a probe of the log directory that fails, named "exists" or "file_size".
//
// A logger isn't guarded: one thread uses it.
class Logger {
 public:
  // Logs as `sourceName`, with codes of the component `componentNumber` (MessageCode), to ZQRMLOG.LOG in the log
  // directory. If the redirect file zqlgrphf.lef in that directory holds another directory than "..", to ZQRMLOG.LOG
  // there. Raises "exists" if the redirect file can't be looked for.
  Logger(std::string sourceName, std::int32_t componentNumber);

  // The same to the file that SetLogFile makes of logFile, without a look at the redirect file.
  Logger(std::string sourceName, std::string logFile, std::int32_t componentNumber);

  // Each writes a message at its level, with `percent` in front of the text when it is above 0 and with the code that
  // MessageCode makes of the id.
  //
  // Returns the record of the message. For a message below the active level, which is rejected, returns that of the
  // last accepted message, empty if there was none. The logger owns the record and overwrites it with its next
  // message.
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

  // The same at a level that passes every filter. First prints the text to standard output, with no line end.
  const LogRecord* LogConsole(std::int32_t id, MessageText text, double percent);

  // Logs at level normal how far a step has come: `completed` of `total`, mapped to the band of the whole scale that
  // begins at `start` percent and is `span` percent wide. Shows at most the end of the band.
  void LogProgress(double completed, double total, double span, double start);

  // Forces the active level, kDebug3 to kConsole; -1 leaves it to the flag files again. Other numbers are ignored.
  void SetLevel(std::int32_t level);

  // The level in force: the one forced by SetLevel, else that of FlaggedLevel. A message below it is rejected.
  std::int32_t GetActiveLevel() const;

  // Sets the log file to the name that NormalizeLogName makes of `logFile`, a path or a bare name in the log directory.
  // "nolog" switches writing off; messages are then only recorded. An empty text changes nothing.
  void SetLogFile(std::string logFile);

  // The log file's path, or "nolog".
  const std::string& Path() const { return path; }

 private:
  const LogRecord* Log(LogLevel level, std::int32_t id, MessageText text, double percent);
  void WriteLine() const;

  std::string name;
  LogRecord record;  // of the last accepted message; each one overwrites it
  std::string path;
  std::int32_t levelOverride = -1;
  std::int32_t componentBase;
};

}  // namespace logging
