#include "audiotests/outcome_table.h"

#include <cstdlib>

#include "audio/outcome_codes.h"
#include "audiotests/zqrmt_return_codes.h"
#include "text/narrow.h"

namespace ZQ_RMT_TESTS_AUDIO {
namespace {

// The engine throws ids of its own, since it knows nothing of its callers. Hosts get them as these.
static_assert(audio::kPlatformError == ZQRMT_OUTCOME_PLATFORM);
static_assert(audio::kEndpointNotFound == ZQRMT_OUTCOME_NO_ENDPOINT);
static_assert(audio::kNoMemoryForSink == ZQRMT_OUTCOME_NO_MEMORY);
static_assert(audio::kSinkWriteFailed == ZQRMT_OUTCOME_TOO_MUCH_SOUND);

}  // namespace

const std::map<std::int32_t, OutcomeEntry> OutcomeTable = {
    {ZQRMT_OUTCOME_BAD_INPUT, {ZQRMT_LEVEL_WARNING, u"Bad JSON input."}},
    {ZQRMT_OUTCOME_PLATFORM, {ZQRMT_LEVEL_WARNING, u"Microsoft API Error"}},
    {ZQRMT_OUTCOME_NO_MEMORY, {ZQRMT_LEVEL_WARNING, u"memory could not be allocated to Buffer"}},
    {ZQRMT_OUTCOME_TOO_MUCH_SOUND, {ZQRMT_LEVEL_WARNING, u"Unable to write to buffer."}},
    {ZQRMT_OUTCOME_NO_ENDPOINT, {ZQRMT_LEVEL_WARNING, u"Could not find device"}},
    {ZQRMT_OUTCOME_RECORD_PASSED, {ZQRMT_LEVEL_NORMAL, u"Audio Record Test passed."}},
    {ZQRMT_OUTCOME_PLAYBACK_PASSED, {ZQRMT_LEVEL_NORMAL, u"Audio Playback Test passed."}},
};

const logging::LogRecord* LogWithSeverity(logging::Logger& logger, std::int32_t severity, std::int32_t code,
                                          const std::string& text) {
  switch (severity) {
    case 1: return logger.LogConsole(code, text, 0.0);
    case 2: return logger.LogNormal(code, text, 0.0);
    case 3: return logger.LogTest1(code, text, 0.0);
    case 4: return logger.LogNotification(code, text, 0.0);
    case 5: return logger.LogDebug1(code, text, 0.0);
    case 7: return logger.LogWarning(code, text, 0.0);
    case 8: return logger.LogError(code, text, 0.0);
    case 9: return logger.LogCritical(code, text, 0.0);
    default: return logger.LogDebug3(code, text, 0.0);
  }
}

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
