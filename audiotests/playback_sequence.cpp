#include "audiotests/playback_sequence.h"

#include "audio/audio_render_stream.h"
#include "audio/endpoint_volume_snapshot.h"
#include "audio/tone_source.h"
#include "audiotests/outcome_table.h"
#include "audiotests/platform_hint.h"
#include "audiotests/reply_text.h"
#include "audiotests/tone_playback.h"
#include "audiotests/zqrmt_return_codes.h"

namespace ZQ_RMT_TESTS_AUDIO {
namespace {

constexpr std::int64_t kBufferDuration = 30000000;  // units of 100 ns
constexpr std::int32_t kLowestFrequency = 900;      // Hz
constexpr std::int32_t kHighestFrequency = 1100;

}  // namespace

char16_t* AudioPlaybackTestClass::RunAudioPlaybackTest(const char16_t* text) {
  logger->LogProgress(0.0, 100.0, 100.0, 0.0);
  contract = std::make_unique<ZQ_RMT_MODELS::RMTDataContract>();
  RunContract(text);
  char16_t* const reply = ReplyText(contract->Serialize());
  contract.reset();
  return reply;
}

void AudioPlaybackTestClass::RunContract(const char16_t* text) {
  // A text that is no contract leaves the fresh core record, which names no endpoint either.
  contract->Deserialize(text);
  ZQ_RMT_MODELS::CoreData* const core = contract->CoreData.get();
  if (core->DeviceInfo == nullptr || core->DeviceInfo->DeviceInstanceID.empty()) {
    ReportOutcome(ZQRMT_OUTCOME_BAD_INPUT, logger, core);
    return;
  }
  try {
    PlayAndReport(core->DeviceInfo->DeviceInstanceID);
  } catch (int outcome) {
    LogMissingPlatform(outcome, *logger);
    ReportOutcome(outcome, logger, core);
  }
}

void AudioPlaybackTestClass::PlayAndReport(const std::u16string& renderName) {
  // Binds the default endpoint first: on a system without one the test fails, whichever endpoint the contract names.
  audio::AudioRenderStreamClass render;
  audio::ToneSourceClass tone(kLowestFrequency, kHighestFrequency);
  audio::EndpointVolumeSnapshotClass settings(&render);
  render = audio::AudioRenderStreamClass(renderName);
  render.SetBufferDuration(kBufferDuration);
  render.Initialize(audio::FixedTestFormat);
  tone.SetFormat(render.GetFormat());
  LoadTone(render, settings, tone);
  PlayOut(render);
  settings.RestoreMute();
  settings.RestoreLevels();
  // The pass is the last step of the sequence, reported while the stream is still held.
  ReportOutcome(ZQRMT_OUTCOME_PLAYBACK_PASSED, logger, contract->CoreData.get());
}

}  // namespace ZQ_RMT_TESTS_AUDIO
