#include "audiotests/tone_playback.h"

#include "platform/core_audio.h"

namespace ZQ_RMT_TESTS_AUDIO {
namespace {

constexpr DWORD kPollInterval = 10;  // ms
// Above any level, so that the snapshot, which limits levels to 1.0, sets the highest.
constexpr float kHighestLevel = 100.0F;

}  // namespace

void LoadTone(audio::AudioRenderStreamClass& stream, audio::EndpointVolumeSnapshotClass& settings,
              audio::ToneSourceClass& tone) {
  settings.SaveMute();
  settings.SetMute(false);
  settings.SaveLevels();
  settings.SetAllLevels(kHighestLevel);
  tone.Synthesize();
  const audio::AudioRenderStreamClass::Buffer buffer = stream.GetBuffer();
  stream.ReleaseBuffer(tone.FillRenderBuffer(buffer.frames, buffer.data));
}

void PlayOut(audio::AudioRenderStreamClass& stream) {
  stream.Start();
  do {
    Sleep(kPollInterval);
  } while (stream.GetCurrentPadding() != 0);
  stream.Stop();
}

}  // namespace ZQ_RMT_TESTS_AUDIO
