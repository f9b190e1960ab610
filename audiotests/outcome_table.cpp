#include "audiotests/outcome_table.h"

#include <cstdlib>

#include "audio/outcome_codes.h"
#include "audiotests/outcomes.h"
#include "text/narrow.h"

namespace ZQ_RMT_TESTS_AUDIO {
namespace {

// The severities are the framework's; 4 stands for notification and 5 for debug1 there, and any other for debug3.
const logging::LogRecord* LogWithSeverity(logging::Logger& logger, std::int32_t severity, std::int32_t code,
                                          const std::string& text) {
  switch (severity) {
    case 1:
      return logger.LogConsole(code, text, 0.0);
    case 2:
      return logger.LogNormal(code, text, 0.0);
    case 3:
      return logger.LogTest1(code, text, 0.0);
    case 4:
      return logger.LogNotification(code, text, 0.0);
    case 5:
      return logger.LogDebug1(code, text, 0.0);
    case 7:
      return logger.LogWarning(code, text, 0.0);
    case 8:
      return logger.LogError(code, text, 0.0);
    case 9:
      return logger.LogCritical(code, text, 0.0);
    default:
      return logger.LogDebug3(code, text, 0.0);
  }
}

}  // namespace

const std::map<std::int32_t, OutcomeEntry> OutcomeTable = {
    {kBadInput, {7, u"Bad JSON input."}},
    {audio::kPlatformError, {7, u"Microsoft API Error"}},
    {audio::kNoMemoryForSink, {7, u"memory could not be allocated to Buffer"}},
    {audio::kSinkWriteFailed, {7, u"Unable to write to buffer."}},
    {audio::kEndpointNotFound, {7, u"Could not find device"}},
    {kRecordPassed, {2, u"Audio Record Test passed."}},
    {kPlaybackPassed, {2, u"Audio Playback Test passed."}},
};

void ReportOutcome(std::int32_t code, logging::Logger* logger, ZQ_RMT_MODELS::CoreData* coreData) {
  const auto outcome = OutcomeTable.find(code);
  const logging::LogRecord* const record =
      outcome == OutcomeTable.end()
          ? logger->LogDebug3(1, "Not handled", 0.0)
          : LogWithSeverity(*logger, outcome->second.severity, code, text::WideToNarrow(outcome->second.message));
  coreData->ReturnCode = std::atoi(record->code.c_str());
  coreData->ReturnMessage = text::NarrowToWide(record->text);
}

}  // namespace ZQ_RMT_TESTS_AUDIO
