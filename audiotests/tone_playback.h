// The steps of playing a tone, which both sequences share. Each throws the outcome code of a step that fails.
#pragma once

#include "audio/audio_render_stream.h"
#include "audio/endpoint_volume_snapshot.h"
#include "audio/tone_source.h"

namespace ZQ_RMT_TESTS_AUDIO {

// Saves the settings of the stream's endpoint, sets it unmuted and to full level, computes the tone and queues all of
// it. The stream is initialised in the tone's format, and `settings` follows it.
void LoadTone(audio::AudioRenderStreamClass& stream, audio::EndpointVolumeSnapshotClass& settings,
              audio::ToneSourceClass& tone);

// Starts the stream, waits until everything that is queued has been played, and stops it. Waits without end if the
// stream never plays it and the platform reports no failure.
void PlayOut(audio::AudioRenderStreamClass& stream);

}  // namespace ZQ_RMT_TESTS_AUDIO
