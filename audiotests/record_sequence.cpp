#include "audiotests/record_sequence.h"

#include <utility>
#include <vector>

#include "audio/audio_capture_stream.h"
#include "audio/audio_render_stream.h"
#include "audio/capture_sink.h"
#include "audio/endpoint_volume_snapshot.h"
#include "audio/format_block.h"
#include "audio/tone_source.h"
#include "audiotests/outcome_table.h"
#include "audiotests/platform_hint.h"
#include "audiotests/reply_text.h"
#include "audiotests/tone_playback.h"
#include "audiotests/zqrmt_return_codes.h"

namespace ZQ_RMT_TESTS_AUDIO {
namespace {

constexpr std::uint32_t kToneFrequency = 1200;  // Hz
// Units of 100 ns. The first has room for the tone of one second and for what is captured before and after it; the
// second is also how long a test without a tone listens.
constexpr std::int64_t kToneBuffer = 15000000;
constexpr std::int64_t kListeningBuffer = 30000000;
constexpr std::int64_t kBufferUnitsPerMillisecond = 10000;
constexpr float kFullLevel = 1.0F;

// Keeps a capture endpoint's settings and sets it unmuted and to full level. Each level is read just before it is
// changed, so a failure leaves the channels that follow as they were.
struct CaptureSettings {
  bool muted = false;
  std::vector<float> levels;

  void SaveAndSet(audio::AudioEndpointClass& endpoint) {
    muted = endpoint.GetMute();
    endpoint.SetMute(false);
    const std::uint32_t channels = endpoint.GetChannelCount();
    for (std::uint32_t channel = 0; channel < channels; ++channel) {
      levels.push_back(endpoint.GetChannelLevel(channel));
      endpoint.SetChannelLevel(channel, kFullLevel);
    }
  }

  void Restore(audio::AudioEndpointClass& endpoint) const {
    endpoint.SetMute(muted);
    for (std::uint32_t channel = 0; channel < levels.size(); ++channel) {
      endpoint.SetChannelLevel(channel, levels[channel]);
    }
  }
};

// Moves everything that was captured into the sink. Without any packet this fails: a capture that delivered nothing is
// a failure of the platform, not silence.
void Drain(audio::AudioCaptureStreamClass& capture, audio::CaptureSinkClass& sink) {
  do {
    const audio::AudioCaptureStreamClass::Packet packet = capture.ReadPacket();
    sink.AppendFrames(packet.data, packet.frames);
    capture.ReleasePacket(packet.frames);
  } while (capture.GetNextPacketSize() != 0);
}

}  // namespace

char16_t* AudioRecordTestClass::RunAudioRecordTest(const char16_t* text) {
  LogStage("Entering RunAudioRecordTest");
  LogProgressMark(0.0);
  contract = std::make_unique<ZQ_RMT_MODELS::RMTDataContract>();
  RunContract(text);
  char16_t* const reply = ReplyText(contract->Serialize());
  contract.reset();
  return reply;
}

void AudioRecordTestClass::RunContract(const char16_t* text) {
  LogStage("Deserializing");
  const bool usable = contract->Deserialize(text);
  ZQ_RMT_MODELS::CoreData* const core = contract->CoreData.get();
  if (!usable || core->DeviceInfo == nullptr) {
    ReportOutcome(ZQRMT_OUTCOME_BAD_INPUT, logger, core);
    return;
  }
  const ZQ_RMT_MODELS::DeviceInfo& device = *core->DeviceInfo;
  // A contract that asks for no recording comes back without an outcome.
  if (device.AudioData == nullptr || device.DeviceInstanceID.empty()) return;
  renderName = device.AudioData->targetDevice;
  captureName = device.DeviceInstanceID;

  RecordAndMeasure(captureName, renderName);
  LogProgressMark(100.0);
  // A code that came with the contract, or that a failing step has set, stays.
  if (core->ReturnCode == 0) ReportOutcome(ZQRMT_OUTCOME_RECORD_PASSED, logger, core);
}

bool AudioRecordTestClass::RecordAndMeasure(std::u16string captureId, std::u16string renderId) {
  try {
    audio::AudioCaptureStreamClass capture(std::move(captureId));
    audio::CaptureSinkClass sink;
    audio::AudioRenderStreamClass render;
    audio::ToneSourceClass tone(kToneFrequency);
    audio::EndpointVolumeSnapshotClass renderSettings(&render);
    const bool plays = !renderId.empty();
    const std::int64_t duration = plays ? kToneBuffer : kListeningBuffer;
    if (plays) {
      LogStage("Setting up render object");
      render = audio::AudioRenderStreamClass(std::move(renderId));
      render.SetBufferDuration(duration);
      render.Initialize(audio::FixedTestFormat);
      tone.SetFormat(render.GetFormat());
      LogStage("Saving and setting render settings");
      LoadTone(render, renderSettings, tone);
    } else {
      LogStage("No render device");
    }
    LogProgressMark(1.0);

    LogStage("Setting up capture object");
    capture.SetBufferDuration(duration);
    capture.Initialize();
    sink.SetFormat(capture.GetFormat());
    LogStage("Saving and setting capture settings");
    CaptureSettings captureSettings;
    captureSettings.SaveAndSet(capture);
    LogProgressMark(2.0);

    // The capture starts before the tone and stops after it, so that it holds the whole tone.
    LogStage("Starting record and play");
    capture.Start();
    if (plays) {
      PlayOut(render);
    } else {
      Sleep(static_cast<DWORD>(duration / kBufferUnitsPerMillisecond));
    }
    capture.Stop();
    LogStage("Stopping record and play");
    LogProgressMark(15.0);

    LogStage("Restoring mic settings");
    captureSettings.Restore(capture);
    LogProgressMark(16.0);
    LogStage("Restoring speaker settings");
    if (plays) {
      renderSettings.RestoreMute();
      renderSettings.RestoreLevels();
    }

    Drain(capture, sink);
    LogProgressMark(17.0);
    LogStage("Calculating amplitudes");
    const std::vector<double> samples = sink.NormalizedSamples();
    LogProgressMark(90.0);
    LogStage("Finding max amplitude");
    const double largest = audio::LargestMagnitude(samples);
    LogProgressMark(99.0);
    contract->CoreData->DeviceInfo->AudioData->maxAmplitude = largest;
    return true;
  } catch (int outcome) {
    LogMissingPlatform(outcome, *logger);
    ReportOutcome(outcome, logger, contract->CoreData.get());
    return false;
  }
}

void AudioRecordTestClass::LogStage(const char* stage) { logger->LogDebug3(0, stage, 0.0); }

void AudioRecordTestClass::LogProgressMark(double percent) { logger->LogProgress(percent, 100.0, 100.0, 0.0); }

}  // namespace ZQ_RMT_TESTS_AUDIO
