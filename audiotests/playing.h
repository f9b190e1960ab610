// The steps of playing a tone that both tests share.
#pragma once

#include "audio/render_stream.h"
#include "audio/tone_source.h"
#include "audio/volume_snapshot.h"

namespace ZQ_RMT_TESTS_AUDIO {

// Saves the settings of the stream's endpoint, sets it unmuted and to full level, and queues the whole tone. `settings`
// follows the stream, which is initialised in the tone's format.
void LoadTone(audio::AudioRenderStreamClass& stream, audio::EndpointVolumeSnapshotClass& settings,
              audio::ToneSourceClass& tone);

// Starts the stream, waits until all that is queued has been played, and stops it.
void PlayOut(audio::AudioRenderStreamClass& stream);

}  // namespace ZQ_RMT_TESTS_AUDIO
