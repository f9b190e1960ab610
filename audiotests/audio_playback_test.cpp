#include "audiotests/audio_playback_test.h"

#include "audio/render_stream.h"
#include "audio/tone_source.h"
#include "audio/volume_snapshot.h"
#include "audiotests/outcome_table.h"
#include "audiotests/outcomes.h"
#include "audiotests/playing.h"

namespace ZQ_RMT_TESTS_AUDIO {
namespace {

constexpr std::int64_t kBufferDuration = 30000000;  // units of 100 ns
constexpr std::int32_t kLowestFrequency = 900;      // Hz
constexpr std::int32_t kHighestFrequency = 1100;

}  // namespace

AudioPlaybackTestClass::AudioPlaybackTestClass() : logger(CreateTestLogger()), contract(CreateContract()) {}

char16_t* AudioPlaybackTestClass::RunAudioPlaybackTest(const char16_t* text) {
  logger->LogProgress(0.0, 100.0, 100.0, 0.0);
  contract = CreateContract();
  RunContract(text);
  char16_t* const reply = DuplicateText(contract->Serialize());
  contract.reset();
  return reply;
}

void AudioPlaybackTestClass::RunContract(const char16_t* text) {
  // Text that can't be used leaves the fresh core record, which names no device either.
  contract->Deserialize(text);
  ZQ_RMT_MODELS::CoreData* const core = contract->CoreData.get();
  if (core->DeviceInfo == nullptr || core->DeviceInfo->DeviceInstanceID.empty()) {
    ReportOutcome(kBadInput, logger, core);
    return;
  }
  try {
    Play(core->DeviceInfo->DeviceInstanceID);
    ReportOutcome(kPlaybackPassed, logger, core);
  } catch (int outcome) {
    ReportOutcome(outcome, logger, core);
  }
}

void AudioPlaybackTestClass::Play(const std::u16string& renderName) {
  // The default endpoint comes first: a system without one can't play, whatever the contract names.
  audio::AudioRenderStreamClass render;
  audio::ToneSourceClass tone(kLowestFrequency, kHighestFrequency);
  audio::EndpointVolumeSnapshotClass settings(&render);
  render = audio::AudioRenderStreamClass(renderName);
  render.SetBufferDuration(kBufferDuration);
  render.Initialize(renderFormat);
  tone.SetFormat(render.GetFormat());
  LoadTone(render, settings, tone);
  PlayOut(render);
  settings.RestoreMute();
  settings.RestoreLevels();
}

}  // namespace ZQ_RMT_TESTS_AUDIO
